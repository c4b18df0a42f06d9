// What an operator does, as a script: each step waits for its moment (a time
// on the pump's clock, or a condition on the screens) and then acts on a
// control as the operator would. Steps run in order. The tests and the
// headless program drive the screens this way, through the same pump as
// everything else.
#pragma once

#include <deque>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/event_source.h"
#include "platform/vb_types.h"

namespace fc {

class Pump;
class Screen;
class Control;

// An operator action that no operator could do: the control is hidden,
// disabled or missing.
class OperatorCannot : public std::logic_error {
  public:
    explicit OperatorCannot(const std::string& what) : std::logic_error(what) {}
};

class OperatorScript : public EventSource {
  public:
    explicit OperatorScript(Pump& pump);
    ~OperatorScript() override;

    // At `ms` on the pump's clock (or as soon after as the step's turn comes).
    OperatorScript& at(long long ms, std::string what, std::function<void()> act);
    // `ms` after the step before it ran.
    OperatorScript& after(long long ms, std::string what, std::function<void()> act);
    // As soon as `condition` holds (checked whenever the program pumps events).
    OperatorScript& when(std::function<bool()> condition, std::string what,
                         std::function<void()> act);

    bool finished() const { return steps_.empty(); }

    // Ends the run through `stop` when the program waits on the operator
    // (Pump::doEventsForOperator) and nothing this script still holds can
    // end that wait: at the start of a turn of the wait it has no step left,
    // or its next step waits for a condition that does not hold, or a step of
    // its own is still acting (a screen it opened waits on it). A step timed
    // by the clock always comes due and never counts. A wait on the operator
    // sets its screen up before its first turn, and during it the screen
    // changes only by what the operator does, so a condition false at a turn
    // stays false. `stop` is told what the next step was for (empty when none
    // was left) and ends the run by throwing. Waits on a device or a timer are
    // never watched.
    void endWhenStuck(std::function<void(const std::string& nextStep)> stop);
    // What has been done, in order, with the time of each step.
    const std::vector<std::string>& done() const { return done_; }

    Micros nextDue() const override;
    void runDue(Micros now) override;

  private:
    bool canGoOn() const;
    void watchOperatorTurn();

    struct Step {
        enum class Trigger { At, After, When } trigger;
        Micros time = 0;
        std::function<bool()> condition;
        std::string what;
        std::function<void()> act;
    };
    Pump& pump_;
    std::deque<Step> steps_;
    Micros lastRun_ = 0;
    std::vector<std::string> done_;
    bool acting_ = false;
    std::function<void(const std::string&)> stop_;
};

// The operator's hands. Each checks that an operator could reach the control.
Control& reach(Screen& screen, const std::string& name);
void operatorClick(Screen& screen, const std::string& name);
void operatorDblClick(Screen& screen, const std::string& name);
void operatorType(Screen& screen, const std::string& name, const std::string& text);
void operatorKey(Screen& screen, const std::string& name, Integer keyAscii);
// A barcode reader into the field with its text selected: the read replaces
// the text, and ends with Enter.
void operatorScan(Screen& screen, const std::string& name, const std::string& text);
void operatorSelect(Screen& screen, const std::string& name, int index);
// Selects the entry whose text is `text` in a list.
void operatorSelectText(Screen& screen, const std::string& name, const std::string& text);

}  // namespace fc
