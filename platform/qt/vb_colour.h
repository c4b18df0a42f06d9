// Colours as the models keep them: a long &HBBGGRR. Values with the top bit
// set name a system colour and have no fixed RGB.
#pragma once

#include <QColor>
#include <cstdint>

namespace fc {

inline bool isSystemColour(std::int32_t colour) {
    return colour < 0;
}

inline QColor toQColor(std::int32_t colour) {
    return QColor(colour & 0xFF, (colour >> 8) & 0xFF, (colour >> 16) & 0xFF);
}

}  // namespace fc
