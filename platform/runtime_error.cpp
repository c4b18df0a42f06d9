#include "platform/runtime_error.h"

#include <map>

namespace fc {

std::string standardDescription(int number) {
    static const std::map<int, std::string> descriptions = {
        {3, "Return without GoSub"},
        {5, "Invalid procedure call or argument"},
        {6, "Overflow"},
        {7, "Out of memory"},
        {9, "Subscript out of range"},
        {11, "Division by zero"},
        {13, "Type mismatch"},
        {52, "Bad file name or number"},
        {53, "File not found"},
        {54, "Bad file mode"},
        {55, "File already open"},
        {57, "Device I/O error"},
        {58, "File already exists"},
        {61, "Disk full"},
        {62, "Input past end of file"},
        {63, "Bad record number"},
        {67, "Too many files"},
        {68, "Device unavailable"},
        {70, "Permission denied"},
        {71, "Disk not ready"},
        {75, "Path/File access error"},
        {76, "Path not found"},
        {91, "Object variable or With block variable not set"},
        {380, "Invalid property value"},
        {8002, "Invalid port number"},
        {8005, "Port already open"},
        {8015, "Could not set comm state"},
        {8018, "Operation valid only when the port is open"},
        {8020, "Error reading comm device"},
        {40002, "ODBC call failed"},
    };
    auto it = descriptions.find(number);
    return it != descriptions.end() ? it->second : "Application-defined or object-defined error";
}

RuntimeError::RuntimeError(int number, std::string description, std::string source)
    : std::runtime_error(std::to_string(number) + " " + description),
      number_(number),
      description_(std::move(description)),
      source_(std::move(source)) {}

RuntimeError::RuntimeError(int number) : RuntimeError(number, standardDescription(number)) {}

}  // namespace fc
