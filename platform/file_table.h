// Files by number, as the classic run time keeps them: "Open ... For Input
// As #1", "Line Input #1", EOF(1), LOF(1), Close. The errors are the run
// time's: 53 for a missing file, 55 for a number already open, 62 for a read
// past the end, 52 for a number that is not open.
#pragma once

#include <cstdint>
#include <fstream>
#include <map>
#include <memory>
#include <string>

namespace fc {

class FileTable {
  public:
    enum class Mode { Input, Output, Append, Binary };

    void open(int number, const std::string& path, Mode mode);
    // Reads one line, without its end: CR LF, LF or a lone CR end a line.
    std::string lineInput(int number);
    // The same into `line`, whose storage is kept from line to line.
    void lineInput(int number, std::string& line);
    // Writes text and CR LF.
    void print(int number, const std::string& text);
    bool eof(int number);
    // Seek: the next read starts at byte `position`, counted from 1.
    void seek(int number, std::int64_t position);
    // Length of the file in bytes.
    std::int64_t lof(int number);
    bool isOpen(int number) const { return files_.count(number) != 0; }
    void close(int number);
    void closeAll();
    // The lowest number not in use (FreeFile).
    int freeFile() const;

  private:
    struct Entry {
        std::fstream stream;
        std::string path;
        Mode mode;
    };
    Entry& entry(int number);
    std::map<int, std::unique_ptr<Entry>> files_;
};

}  // namespace fc
