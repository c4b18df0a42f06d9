#include "platform/file_table.h"

#include <filesystem>

#include "platform/runtime_error.h"

namespace fc {

void FileTable::open(int number, const std::string& path, Mode mode) {
    if (number < 1 || number > 511)
        throw RuntimeError(err::kBadFileNameOrNumber);
    if (files_.count(number))
        throw RuntimeError(err::kFileAlreadyOpen);
    if (path.empty())
        throw RuntimeError(err::kBadFileNameOrNumber);
    std::error_code ec;
    if (mode == Mode::Input) {
        if (!std::filesystem::exists(path, ec))
            throw RuntimeError(err::kFileNotFound);
        if (std::filesystem::is_directory(path, ec))
            throw RuntimeError(err::kPathFileAccessError);
    }
    auto e = std::make_unique<Entry>();
    std::ios::openmode m = std::ios::binary;
    switch (mode) {
        case Mode::Input:
            m |= std::ios::in;
            break;
        case Mode::Output:
            m |= std::ios::out | std::ios::trunc;
            break;
        case Mode::Append:
            m |= std::ios::out | std::ios::app;
            break;
        case Mode::Binary:
            m |= std::ios::in | std::ios::out;
            break;
    }
    e->stream.open(path, m);
    if (!e->stream.is_open()) {
        throw RuntimeError(mode == Mode::Input ? err::kPermissionDenied : err::kPathNotFound);
    }
    e->path = path;
    e->mode = mode;
    files_[number] = std::move(e);
}

FileTable::Entry& FileTable::entry(int number) {
    auto it = files_.find(number);
    if (it == files_.end())
        throw RuntimeError(err::kBadFileNameOrNumber);
    return *it->second;
}

std::string FileTable::lineInput(int number) {
    std::string line;
    lineInput(number, line);
    return line;
}

// The characters are taken from the stream's buffer directly: a formatted
// read of each one would build and check a sentry per character.
void FileTable::lineInput(int number, std::string& line) {
    Entry& e = entry(number);
    if (e.mode != Mode::Input)
        throw RuntimeError(err::kBadFileMode);
    std::istream& in = e.stream;
    if (in.peek() == std::char_traits<char>::eof())
        throw RuntimeError(err::kInputPastEndOfFile);
    using Traits = std::char_traits<char>;
    std::streambuf& buffer = *in.rdbuf();
    line.clear();
    for (;;) {
        Traits::int_type c = buffer.sbumpc();
        if (Traits::eq_int_type(c, Traits::eof()) || c == '\n')
            break;
        if (c == '\r') {
            if (buffer.sgetc() == '\n')
                buffer.sbumpc();
            break;
        }
        line.push_back(Traits::to_char_type(c));
    }
}

void FileTable::print(int number, const std::string& text) {
    Entry& e = entry(number);
    if (e.mode == Mode::Input)
        throw RuntimeError(err::kBadFileMode);
    e.stream << text << "\r\n";
    e.stream.flush();
}

bool FileTable::eof(int number) {
    Entry& e = entry(number);
    return e.stream.peek() == std::char_traits<char>::eof();
}

void FileTable::seek(int number, std::int64_t position) {
    Entry& e = entry(number);
    if (position < 1)
        throw RuntimeError(err::kBadRecordNumber);
    e.stream.clear();
    e.stream.seekg(position - 1);
    e.stream.seekp(position - 1);
}

std::int64_t FileTable::lof(int number) {
    Entry& e = entry(number);
    std::error_code ec;
    auto size = std::filesystem::file_size(e.path, ec);
    return ec ? 0 : static_cast<std::int64_t>(size);
}

void FileTable::close(int number) {
    files_.erase(number);
}

void FileTable::closeAll() {
    files_.clear();
}

int FileTable::freeFile() const {
    int n = 1;
    while (files_.count(n)) ++n;
    return n;
}

}  // namespace fc
