// A scale's graphic display as the communications driver reaches it: it
// takes the 130-character records one at a time, builds its flash image from
// the firmware lines the data records carry, and answers each question with
// "SI" or "NO" and the question's tag. The start record gives the CRC the
// image must have; a question after the image's end record is answered by
// that CRC, an earlier one by whether the records came in order.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace fc::sim {

struct DisplayFaults {
    bool rejectsCrc = false;        // answers "NO" to the last question
    bool rejectsQuestions = false;  // answers "NO" to the questions before it
    bool silentAtEnd = false;       // never answers the last question
};

class GraphicDisplay {
  public:
    using Faults = DisplayFaults;

    explicit GraphicDisplay(Faults faults = {}) : faults_(faults) {}

    // Takes one record (without its line end); the answer line, if any.
    std::optional<std::string> receive(const std::string& record);

    // The CRC-16 (0x1021, from 0) of the image's bytes 0 to 0xFEFF.
    static std::uint16_t crcOf(const std::vector<std::uint8_t>& image);

    const std::vector<std::uint8_t>& image() const { return image_; }
    long records() const { return nextRecord_; }
    int questions() const { return questions_; }
    bool started() const { return started_; }
    long expectedCrc() const { return expectedCrc_; }

  private:
    void start(const std::string& record);
    void data(const std::string& record);
    void storeHexLine(const std::string& field);
    std::string answer(const std::string& record);

    Faults faults_;
    std::vector<std::uint8_t> image_ = std::vector<std::uint8_t>(0x10001, 0xFF);
    bool started_ = false;
    long expectedCrc_ = -1;
    long nextRecord_ = 0;
    bool inOrder_ = true;
    bool endSeen_ = false;
    int questions_ = 0;
};

}  // namespace fc::sim
