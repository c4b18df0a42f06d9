// The one way the system waits. Every wait loop of the loader is built from
// doEvents() and sleep(); all timers, line and socket events and operator
// actions run inside doEvents().
#pragma once

#include <cstdint>
#include <exception>
#include <functional>
#include <utility>
#include <vector>

#include "platform/event_source.h"

namespace fc {

class Pump {
  public:
    virtual ~Pump() = default;

    // Runs everything that is due. When nothing is due it waits for the next
    // thing to happen, but at most one millisecond.
    virtual void doEvents() = 0;

    // Runs what is due now and returns at once, never waiting: the yield of a
    // long piece of work (a file read line by line) that lets the screen's
    // events in between its steps without costing it a wait on each one.
    virtual void doPendingEvents();

    // One turn of a wait that only the operator can end (a wizard step, the
    // wait for "Again", a modal screen): runs the program's events as
    // doEvents() does, after telling the operator watch, if one is set, that
    // the program is waiting on the operator. Waits on a device or a timer
    // use doEvents() itself.
    void doEventsForOperator();

    // Called at the start of every turn of a wait on the operator, by a
    // program whose operator is a script: it may end the run there (by
    // throwing) when the script has nothing left that could end the wait.
    void setOperatorWatch(std::function<void()> watch) { operatorWatch_ = std::move(watch); }

    // A plain sleep during which the program's events do not run.
    virtual void sleep(int ms) = 0;

    // Milliseconds and microseconds on this pump's clock.
    std::int64_t now() const { return nowMicros() / 1000; }
    virtual Micros nowMicros() const = 0;

    void add(EventSource& source);
    void remove(EventSource& source);

    // Records an exception raised where it cannot travel (inside a toolkit's
    // event dispatch); the running doEvents() throws it on return.
    void defer(std::exception_ptr error);

  protected:
    // The registered sources, copied so that sources may come and go while
    // others run.
    std::vector<EventSource*> snapshot() const { return sources_; }
    bool isRegistered(const EventSource* source) const;
    // Runs every source due at `now` (and, for a real pump, the ones whose
    // wake descriptor is ready). Returns how many ran.
    int runDueSources(Micros now, bool programSide, const std::vector<int>& readyFds = {});
    Micros earliestDue(bool worldOnly) const;
    void throwDeferred();

  private:
    std::vector<EventSource*> sources_;
    std::vector<EventSource*> running_;
    std::exception_ptr deferred_;
    std::function<void()> operatorWatch_;
};

}  // namespace fc
