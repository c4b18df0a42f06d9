#include "platform/qt/key_ascii.h"

#include <QKeyEvent>

namespace fc {

std::optional<Integer> keyAsciiOf(const QKeyEvent& event) {
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
        case Qt::Key_Delete:
            return std::nullopt;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return Integer{13};
        case Qt::Key_Backspace:
            return Integer{8};
        case Qt::Key_Escape:
            return Integer{27};
        default:
            break;
    }
    const QString text = event.text();
    if (text.size() != 1)
        return std::nullopt;
    const char16_t c = text.at(0).unicode();
    if (c == 0 || c == 127 || c > 255)
        return std::nullopt;
    return static_cast<Integer>(c);
}

}  // namespace fc
