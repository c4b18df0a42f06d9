#include "firmware/mensaje_eth.h"

namespace fc {

std::string fixedText(std::string text, std::size_t width) {
    text.resize(width, ' ');
    return text;
}

}  // namespace fc
