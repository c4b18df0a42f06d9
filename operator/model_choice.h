// The model chosen on step 0 as an operator chooses it: the button of the
// model's group (scales, labellers, visors), then the model's picture.
#pragma once

#include <string>

namespace fc {

class Firmcast;

// The option button that shows the group of catalogue code `code`.
std::string groupButtonOf(int code);

// Clicks the group's button, then the model's picture.
void operatorPickModel(Firmcast& form, int code);

}  // namespace fc
