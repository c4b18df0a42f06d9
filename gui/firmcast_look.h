// The parts of the main screen's window, for firmcast_layout.cpp. Every part
// works on the widgets by control name and holds no logic of the system.
#pragma once

#include <QString>
#include <map>
#include <string>

class QWidget;
class QLayout;

namespace fc {

using Widgets = std::map<std::string, QWidget*>;

// The widget of a control; the layouts only ask for controls that exist.
QWidget* widgetNamed(const Widgets& widgets, const std::string& name);

// A click on a model picture as the mouse makes it, which the window hands
// to the screen. While it runs, `clickingPicture()` is true: the click goes
// on up to the card, which must not click again.
void clickPicture(QWidget* picture);
bool clickingPicture();

// Step 0: the kinds of device beside the cards of their models.
QWidget* buildModelStep(const Widgets& widgets);
// The frames of steps 1 to 4, in their order on the page.
void addLaterSteps(const Widgets& widgets, QLayout* page);
// The bottom row: Production Way and Again on the left, Back, Next and Exit
// on the right.
QLayout* buildButtonRow(const Widgets& widgets);

// The column that names the five steps and the heading over the page, both
// following which step's frames are on screen.
// The column shows the operating level too.
QWidget* buildStepColumn(const Widgets& widgets, QWidget* window);
QWidget* buildStepHeading(QWidget* window);
void followSteps(const Widgets& widgets, QWidget* window);

// Tab order through the controls, Enter and Space as a Windows operator
// expects.
void setUpKeyboard(const Widgets& widgets, QWidget* window);
// Puts the focus on the first control of step `step` (0..4) as it comes.
void focusStep(const Widgets& widgets, int step);

// The window's style sheet.
QString firmcastStyleSheet();

}  // namespace fc
