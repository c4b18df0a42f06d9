#include "common/folder_list.h"

#include "platform/controls.h"
#include "platform/drives.h"
#include "platform/runtime_error.h"

namespace fc {

void muestraUnidades(DriveList& Drive1, const Drives& drives) {
    Drive1.clear();
    for (char letter : drives.existingDrives()) Drive1.addItem(std::string(1, letter) + ":");
}

void muestraCarpeta(DirList& Dir1, std::vector<std::string>& entradas, const Drives& drives,
                    const std::string& folder) {
    const std::string wanted = normaliseWindowsPath(folder.size() == 2 ? folder + "\\" : folder);
    if (drives.hostPath(wanted).empty())
        throw RuntimeError(err::kPathNotFound);
    Dir1.clear();
    entradas.assign(1, wanted.substr(0, 3));
    Dir1.addItem(wanted.substr(0, 3));
    std::string indent = "   ";
    for (std::string::size_type start = 3; start < wanted.size();) {
        const std::string::size_type slash = wanted.find('\\', start);
        entradas.push_back(wanted.substr(0, slash));
        Dir1.addItem(indent +
                     wanted.substr(start, slash == std::string::npos ? slash : slash - start));
        indent += "   ";
        start = slash == std::string::npos ? wanted.size() : slash + 1;
    }
    const int current = Dir1.listCount() - 1;
    const std::string parent = wanted.size() == 3 ? wanted : wanted + "\\";
    for (const std::string& name : drives.listFolders(wanted)) {
        entradas.push_back(parent + name);
        Dir1.addItem(indent + name);
    }
    Dir1.setListIndex(current);
    Dir1.setPath(wanted);
}

}  // namespace fc
