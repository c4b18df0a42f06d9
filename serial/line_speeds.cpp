#include "serial/line_speeds.h"

#include <iterator>

#include "platform/controls.h"

namespace fc {

namespace {
const char* const kSpeeds[] = {"115200", "57600", "38400", "28800", "19200",
                               "14400",  "9600",  "2400",  "1200"};
}

void CargaComboVelocidades(ComboBox& cmbvelocidades) {
    cmbvelocidades.clear();
    for (int i = 0; i < 9; ++i) {
        cmbvelocidades.addItem(kSpeeds[i]);
        cmbvelocidades.setItemData(cmbvelocidades.listCount() - 1, i);
    }
}

std::vector<std::string> speedListEntries() {
    return std::vector<std::string>(std::begin(kSpeeds), std::end(kSpeeds));
}

std::string speedForItemData(long itemData) {
    if (itemData >= 0 && itemData <= 5)
        return kSpeeds[itemData];
    return "9600";
}

}  // namespace fc
