// Texts cross between the models (std::string, UTF-8) and Qt (QString) here.
#pragma once

#include <QString>
#include <string>

namespace fc {

inline QString toQString(const std::string& text) {
    return QString::fromStdString(text);
}
inline std::string fromQString(const QString& text) {
    return text.toStdString();
}

}  // namespace fc
