// Where the widgets of a screen stand. The screen models carry no geometry:
// a screen may have a hand-made layout registered under its name; any other
// screen gets the generic one.
#pragma once

#include <functional>
#include <map>
#include <string>

class QWidget;

namespace fc {

class Screen;

// Receives every control's widget by control name, and the window. The
// widgets already have their parents: a control inside a frame is a child of
// the frame's QGroupBox, any other control a child of the window. The layout
// may set geometries, install Qt layouts or reparent widgets as it likes.
using ScreenLayout =
    std::function<void(const std::map<std::string, QWidget*>& widgets, QWidget* window)>;

// Registers (or replaces) the layout of the screens named `screenName`; it is
// used by every window built for such a screen afterwards.
void registerScreenLayout(const std::string& screenName, ScreenLayout layout);
void unregisterScreenLayout(const std::string& screenName);
// The registered layout, or nullptr.
const ScreenLayout* findScreenLayout(const std::string& screenName);

// The generic layout: the screen's top-level controls in one column, in the
// order they were created; each frame a group box whose controls fill a grid
// of `columns` columns, row after row.
void arrangeGenerically(const Screen& screen, const std::map<std::string, QWidget*>& widgets,
                        QWidget* window, int columns = 3);

}  // namespace fc
