// The list of line speeds and what each entry's item data means.
#pragma once

#include <string>
#include <vector>

namespace fc {

class ComboBox;

// Empties the list and fills it with the nine speeds, each with its item data.
void CargaComboVelocidades(ComboBox& cmbvelocidades);

// The texts of the nine entries of the speed list, in its order.
std::vector<std::string> speedListEntries();

// The speed text the line runs at for an entry's item data. The entries
// "2400" and "1200" (7 and 8) run at 9600: that is how the loader has always
// behaved, and the devices' boot loaders expect it.
std::string speedForItemData(long itemData);

}  // namespace fc
