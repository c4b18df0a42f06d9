// The GUI pump runs Qt's events and the program's own, and whatever a
// handler raises inside Qt's dispatch comes out of the running doEvents().
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "demo_window_fixture.h"
#include "platform/runtime_error.h"
#include "platform/window_timer.h"

namespace fc::test {
namespace {

using QtPumpTest = DemoWindowTest;

void postToQt(std::function<void()> call) {
    QMetaObject::invokeMethod(QCoreApplication::instance(), std::move(call), Qt::QueuedConnection);
}

void postClick(QPushButton* button) {
    QMetaObject::invokeMethod(button, &QPushButton::click, Qt::QueuedConnection);
}

TEST_F(QtPumpTest, RunsQtEventsAndWindowTimers) {
    bool posted = false;
    postToQt([&] { posted = true; });
    pump.doEvents();
    EXPECT_TRUE(posted);

    WindowTimer timer(pump, "timerout");
    int fired = 0;
    timer.onTimer = [&] { ++fired; };
    timer.setInterval(2);
    timer.setEnabled(true);
    // Each doEvents waits at most about 1 ms; a few thousand passes are ample.
    for (int i = 0; i < 5000 && fired == 0; ++i) pump.doEvents();
    EXPECT_GE(fired, 1);
}

TEST_F(QtPumpTest, ErrorInAHandlerSurfacesAfterQtsProcessingReturns) {
    screen.cmdGo.onClick = [] { throw RuntimeError(err::kTypeMismatch); };
    bool before = false, after = false;
    postToQt([&] { before = true; });
    postClick(widget<QPushButton>("cmdGo"));
    postToQt([&] { after = true; });
    try {
        pump.doEvents();
        FAIL() << "the handler's error was lost";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 13);
    }
    // Qt finished its dispatch: the event queued behind the click ran too.
    EXPECT_TRUE(before);
    EXPECT_TRUE(after);
    EXPECT_NO_THROW(pump.doEvents()) << "the error is thrown once";
}

TEST_F(QtPumpTest, ProgramEndFromAHandlerSurfacesFromDoEvents) {
    screen.cmdGo.onClick = [] { throw ProgramEnd{3}; };
    EXPECT_NO_THROW(QTest::mouseClick(widget<QPushButton>("cmdGo"), Qt::LeftButton));
    try {
        pump.doEvents();
        FAIL() << "the end of the program was lost";
    } catch (const ProgramEnd& end) {
        EXPECT_EQ(end.exitStatus, 3);
    }
}

TEST_F(QtPumpTest, ErrorInsideANestedWaitSurfacesFromTheOuterOne) {
    // A click on the label starts a wait (pumping, as a load does); meanwhile
    // a click on cmdGo raises an error. The error ends the inner wait, leaves
    // the label's handler, and comes out of the outermost doEvents.
    int innerPasses = 0;
    bool innerSawError = false;
    screen.lblTitle.onClick = [&] {
        try {
            for (innerPasses = 0; innerPasses < 1000; ++innerPasses) pump.doEvents();
        } catch (const RuntimeError&) {
            innerSawError = true;
            throw;
        }
    };
    screen.cmdGo.onClick = [] { throw RuntimeError(err::kFileNotFound); };
    QWidget* label = window.widgetFor("lblTitle");
    postToQt([label] { QTest::mouseClick(label, Qt::LeftButton); });
    postClick(widget<QPushButton>("cmdGo"));
    try {
        pump.doEvents();
        FAIL() << "the error was lost";
    } catch (const RuntimeError& e) {
        EXPECT_EQ(e.number(), 53);
    }
    EXPECT_TRUE(innerSawError);
    EXPECT_LT(innerPasses, 1000);
}

}  // namespace
}  // namespace fc::test
