// Message boxes: the style numbers map to Qt's icons and buttons, the buttons
// to the answer numbers; modal screens pump until they unload.
#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include "demo_screen.h"
#include "gui_application.h"
#include "operator/operator_script.h"
#include "platform/qt/message_box_style.h"
#include "platform/qt/qt_dialogs.h"
#include "platform/qt/qt_pump.h"
#include "platform/qt/screen_window.h"

namespace fc::test {
namespace {

TEST(MessageBoxLook, IconsByStyle) {
    EXPECT_EQ(messageBoxLook(0).icon, QMessageBox::NoIcon);
    EXPECT_EQ(messageBoxLook(mb::kCritical).icon, QMessageBox::Critical);
    EXPECT_EQ(messageBoxLook(mb::kQuestion).icon, QMessageBox::Question);
    EXPECT_EQ(messageBoxLook(mb::kExclamation).icon, QMessageBox::Warning);
    EXPECT_EQ(messageBoxLook(mb::kInformation).icon, QMessageBox::Information);
    EXPECT_EQ(messageBoxLook(mb::kYesNo + mb::kQuestion).icon, QMessageBox::Question);
}

TEST(MessageBoxLook, ButtonsByStyle) {
    EXPECT_EQ(messageBoxLook(mb::kOkOnly).buttons, QMessageBox::Ok);
    EXPECT_EQ(messageBoxLook(mb::kOkCancel).buttons, QMessageBox::Ok | QMessageBox::Cancel);
    EXPECT_EQ(messageBoxLook(3).buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_EQ(messageBoxLook(mb::kYesNo + mb::kExclamation).buttons,
              QMessageBox::Yes | QMessageBox::No);
    EXPECT_EQ(messageBoxLook(mb::kInformation).buttons, QMessageBox::Ok);
}

TEST(MessageBoxLook, DefaultAndEscapeButtons) {
    EXPECT_EQ(messageBoxLook(mb::kYesNo).defaultButton, QMessageBox::Yes);
    EXPECT_EQ(messageBoxLook(mb::kYesNo + 256).defaultButton, QMessageBox::No);
    EXPECT_EQ(messageBoxLook(3 + 512).defaultButton, QMessageBox::Cancel);
    EXPECT_EQ(messageBoxLook(mb::kOkOnly).escapeButton, QMessageBox::Ok);
    EXPECT_EQ(messageBoxLook(mb::kOkCancel).escapeButton, QMessageBox::Cancel);
}

TEST(MessageBoxLook, AnswersByButton) {
    EXPECT_EQ(messageBoxAnswer(QMessageBox::Ok), mb::kOk);
    EXPECT_EQ(messageBoxAnswer(QMessageBox::Cancel), mb::kCancel);
    EXPECT_EQ(messageBoxAnswer(QMessageBox::Yes), mb::kYes);
    EXPECT_EQ(messageBoxAnswer(QMessageBox::No), mb::kNo);
}

class QtDialogsTest : public ::testing::Test, protected WithGuiApplication {
  protected:
    QtPump pump;
    QtDialogs dialogs{pump};
};

// Answers the message box that is open with `button`, from inside its loop,
// and records what it showed.
struct BoxAnswerer {
    QMessageBox::StandardButton button;
    QString title, text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;

    void arm() {
        QTimer::singleShot(0, [this] {
            for (QWidget* w : QApplication::topLevelWidgets()) {
                auto* box = qobject_cast<QMessageBox*>(w);
                if (box == nullptr || !box->isVisible())
                    continue;
                title = box->windowTitle();
                text = box->text();
                icon = box->icon();
                box->button(button)->click();
                return;
            }
            arm();  // not shown yet
        });
    }
};

TEST_F(QtDialogsTest, MsgBoxShowsTheTextAndReturnsTheAnswer) {
    BoxAnswerer answerer{QMessageBox::No, {}, {}};
    answerer.arm();
    EXPECT_EQ(dialogs.msgBox("Retry?", mb::kYesNo + mb::kQuestion), mb::kNo);
    EXPECT_EQ(answerer.text, "Retry?");
    EXPECT_EQ(answerer.title, kAppTitle) << "an empty title is the application's";
    EXPECT_EQ(answerer.icon, QMessageBox::Question);

    BoxAnswerer ok{QMessageBox::Ok, {}, {}};
    ok.arm();
    EXPECT_EQ(dialogs.msgBox("No korvacom", mb::kOkOnly, "Display"), mb::kOk);
    EXPECT_EQ(ok.title, "Display");
    EXPECT_EQ(ok.icon, QMessageBox::NoIcon);
}

TEST_F(QtDialogsTest, ShowModalPumpsUntilTheScreenUnloads) {
    DemoScreen modal("frmDatosBalanza");
    bool wasModal = false;
    OperatorScript operatorHands(pump);
    operatorHands.when(
        [&] { return modal.loaded(); }, "look and close",
        [&] {
            auto* shown = qobject_cast<ScreenWindow*>(QApplication::activeModalWidget());
            wasModal = shown != nullptr && &shown->screen() == &modal && shown->isVisible();
            modal.unload();
        });
    dialogs.showModal(modal);
    EXPECT_TRUE(wasModal);
    EXPECT_TRUE(operatorHands.finished());
    EXPECT_FALSE(modal.loaded());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(QtDialogsTest, AScreenShownModallyTwiceOutlivesItsFirstWindow) {
    DemoScreen modal("frmCargaDisplayGrafico");
    int shown = 0;
    OperatorScript operatorHands(pump);
    auto closeWhenShown = [&] {
        operatorHands.when([&] { return modal.loaded(); }, "close",
                           [&] {
                               ++shown;
                               modal.File1.setListIndex(1);
                               modal.unload();
                           });
    };
    closeWhenShown();
    dialogs.showModal(modal);
    // The first window is gone; the model goes on changing without it.
    modal.File1.setListIndex(2);
    modal.setCaption("second time");
    closeWhenShown();
    dialogs.showModal(modal);
    EXPECT_EQ(shown, 2);
    EXPECT_EQ(modal.File1.listIndex(), 1);
}

}  // namespace
}  // namespace fc::test
