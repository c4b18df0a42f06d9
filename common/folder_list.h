// The drive and folder lists of a screen's file choice: the drives that
// exist, and a folder shown as a tree's open branch (the drive's root, each
// folder on the way down indented by its depth, the folder itself selected,
// and its sub-folders one step further in), each line standing for a folder.
#pragma once

#include <string>
#include <vector>

namespace fc {

class Drives;
class DriveList;
class DirList;

// Fills the drive list with the drives that exist now ("c:", "t:" ...).
void muestraUnidades(DriveList& Drive1, const Drives& drives);

// Shows `folder` in the folder list and makes it the list's path (its Change
// follows); `entradas` receives the folder each line stands for. A folder
// that does not exist is the run time's "Path not found" (76).
void muestraCarpeta(DirList& Dir1, std::vector<std::string>& entradas, const Drives& drives,
                    const std::string& folder);

}  // namespace fc
