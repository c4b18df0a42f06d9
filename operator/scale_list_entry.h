// The scale list entered as an operator enters it on step 3, for a program
// that has no operator at the screen.
#pragma once

#include <string>
#include <vector>

namespace fc {

class Firmcast;

// Types the count into Text1 and presses Enter; then, for each scale in
// turn, chooses its entry in cmbbalanza, types its address into txtDirTCP
// and presses Enter; with `guardar`, presses cmdSave at the end. Every
// message and refusal is the screen's own, as for a person at the keys.
void introduceListaBalanzas(Firmcast& form, const std::vector<std::string>& direcciones,
                            bool guardar);

}  // namespace fc
