#include "app/batch_world.h"

#include "platform/program_folder.h"

namespace fc::batch {

BatchWorld::BatchWorld(std::ostream& out) {
    dialogs.onShown = [&out](const ShownBox& box) { out << "msgbox: " << box.text << std::endl; };
}

Services BatchWorld::services() {
    return machine.services(pump, dialogs, serialPorts, files, programFolder());
}

}  // namespace fc::batch
