#include <cctype>

#include "platform/process_launcher.h"
#include "platform/text_case.h"

namespace fc {

namespace {

bool isBlank(char c) {
    return c == ' ' || c == '\t';
}

// Where the program's name ends in `text` (which starts with it).
std::string::size_type programEnd(const std::string& text) {
    if (!text.empty() && text[0] == '"') {
        std::string::size_type close = text.find('"', 1);
        return close == std::string::npos ? text.size() : close + 1;
    }
    std::string lowered = lowerCase(text);
    for (std::string::size_type at = lowered.find(".exe"); at != std::string::npos;
         at = lowered.find(".exe", at + 1)) {
        std::string::size_type after = at + 4;
        if (after == text.size() || isBlank(text[after]))
            return after;
    }
    std::string::size_type blank = text.find_first_of(" \t");
    return blank == std::string::npos ? text.size() : blank;
}

std::string unquoted(const std::string& word) {
    if (word.size() >= 2 && word.front() == '"' && word.back() == '"') {
        return word.substr(1, word.size() - 2);
    }
    return word;
}

// The end of the word that starts at `at`: a quoted word ends after its
// closing quote, any other at the next blank.
std::string::size_type wordEnd(const std::string& text, std::string::size_type at) {
    std::string::size_type end =
        text[at] == '"' ? text.find('"', at + 1) : text.find_first_of(" \t", at);
    if (end == std::string::npos)
        return text.size();
    return text[at] == '"' ? end + 1 : end;
}

std::vector<std::string> words(const std::string& text) {
    std::vector<std::string> out;
    for (std::string::size_type at = text.find_first_not_of(" \t"); at != std::string::npos;
         at = text.find_first_not_of(" \t", at)) {
        std::string::size_type end = wordEnd(text, at);
        out.push_back(unquoted(text.substr(at, end - at)));
        at = end;
    }
    return out;
}

}  // namespace

CommandLine splitCommandLine(const std::string& commandLine) {
    std::string::size_type start = 0;
    while (start < commandLine.size() && isBlank(commandLine[start])) ++start;
    std::string text = commandLine.substr(start);
    std::string::size_type end = programEnd(text);
    return CommandLine{unquoted(text.substr(0, end)), words(text.substr(end))};
}

}  // namespace fc
