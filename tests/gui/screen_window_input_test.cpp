// What the operator does in a screen window reaches the model as an
// operator's action would.
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>
#include <vector>

#include "demo_window_fixture.h"
#include "platform/runtime_error.h"

namespace fc::test {
namespace {

using OperatorInWindow = DemoWindowTest;

// Where an operator clicks a radio button or a check box: on its indicator.
void clickIndicator(QWidget* button) {
    QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(6, button->height() / 2));
}

void clickRow(QListWidget* list, int row) {
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                      list->visualItemRect(list->item(row)).center());
}

void clickRow(QTreeWidget* tree, int row) {
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                      tree->visualItemRect(tree->topLevelItem(row)).center());
}

TEST_F(OperatorInWindow, ButtonClickReachesOnClick) {
    int clicks = 0;
    screen.cmdGo.onClick = [&] { ++clicks; };
    QTest::mouseClick(widget<QPushButton>("cmdGo"), Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(screen.focused(), &screen.cmdGo);

    screen.cmdGo.setEnabled(false);
    QTest::mouseClick(widget<QPushButton>("cmdGo"), Qt::LeftButton);
    EXPECT_EQ(clicks, 1) << "a disabled button cannot be clicked";
}

TEST_F(OperatorInWindow, RadioClickSetsTheOptionAndClicks) {
    std::vector<std::string> clicked;
    screen.optSerial.onClick = [&] { clicked.push_back("optSerial"); };
    screen.optEthernet.onClick = [&] { clicked.push_back("optEthernet"); };
    screen.optSerial.setValue(true);
    clicked.clear();

    clickIndicator(widget<QRadioButton>("optEthernet"));
    EXPECT_TRUE(screen.optEthernet.value());
    EXPECT_FALSE(screen.optSerial.value());
    EXPECT_FALSE(widget<QRadioButton>("optSerial")->isChecked());
    EXPECT_EQ(clicked, std::vector<std::string>{"optEthernet"});

    // Clicking the selected option clicks it again and leaves it selected.
    clickIndicator(widget<QRadioButton>("optEthernet"));
    EXPECT_TRUE(screen.optEthernet.value());
    EXPECT_TRUE(widget<QRadioButton>("optEthernet")->isChecked());
    EXPECT_EQ(clicked, (std::vector<std::string>{"optEthernet", "optEthernet"}));
}

TEST_F(OperatorInWindow, CheckBoxClickTogglesTheValue) {
    int clicks = 0;
    screen.chkAdsl.onClick = [&] { ++clicks; };
    clickIndicator(widget<QCheckBox>("chkAdsl"));
    EXPECT_EQ(screen.chkAdsl.value(), 1);
    clickIndicator(widget<QCheckBox>("chkAdsl"));
    EXPECT_EQ(screen.chkAdsl.value(), 0);
    EXPECT_EQ(clicks, 2);
}

TEST_F(OperatorInWindow, HandlerCanKeepACheckBoxClear) {
    screen.chkAdsl.onClick = [&] { screen.chkAdsl.setValue(0); };
    clickIndicator(widget<QCheckBox>("chkAdsl"));
    EXPECT_EQ(screen.chkAdsl.value(), 0);
    EXPECT_EQ(widget<QCheckBox>("chkAdsl")->checkState(), Qt::Unchecked);
}

TEST_F(OperatorInWindow, TypingGoesThroughKeyPressFirst) {
    std::vector<int> keys;
    int changes = 0;
    screen.txtName.onKeyPress = [&](Integer& key) {
        keys.push_back(key);
        if (key == '1')
            key = 0;  // swallowed
        if (key == 'c')
            key = 'C';  // replaced
    };
    screen.txtName.onChange = [&] { ++changes; };
    QTest::keyClicks(widget<QLineEdit>("txtName"), "ab1c");
    EXPECT_EQ(keys, (std::vector<int>{'a', 'b', '1', 'c'}));
    EXPECT_EQ(screen.txtName.text(), "abC");
    EXPECT_EQ(widget<QLineEdit>("txtName")->text(), "abC");
    EXPECT_EQ(changes, 3);

    QTest::keyClick(widget<QLineEdit>("txtName"), Qt::Key_Backspace);
    EXPECT_EQ(keys.back(), 8);
    EXPECT_EQ(screen.txtName.text(), "ab");
}

TEST_F(OperatorInWindow, EnterReachesKeyPressAs13) {
    std::vector<int> keys;
    screen.txtName.setText("7");
    screen.txtName.onKeyPress = [&](Integer& key) { keys.push_back(key); };
    QTest::keyClick(widget<QLineEdit>("txtName"), Qt::Key_Return);
    QTest::keyClick(widget<QLineEdit>("txtName"), Qt::Key_Tab);
    EXPECT_EQ(keys, std::vector<int>{13}) << "Tab moves the focus and raises no KeyPress";
    EXPECT_EQ(screen.txtName.text(), "7");
}

TEST_F(OperatorInWindow, HandlerChangingTheTextKeepsTheWidgetInStep) {
    screen.txtName.onChange = [&] {
        if (screen.txtName.text().size() > 3)
            screen.txtName.setText(screen.txtName.text().substr(0, 3));
    };
    QTest::keyClicks(widget<QLineEdit>("txtName"), "12345");
    EXPECT_EQ(screen.txtName.text(), "123");
    EXPECT_EQ(widget<QLineEdit>("txtName")->text(), "123");
}

TEST_F(OperatorInWindow, KeyPressOnAComboBox) {
    std::vector<int> keys;
    screen.cmbSpeed.onKeyPress = [&](Integer& key) { keys.push_back(key); };
    QTest::keyClick(widget<QComboBox>("cmbSpeed"), Qt::Key_Return);
    EXPECT_EQ(keys, std::vector<int>{13});
}

TEST_F(OperatorInWindow, ChoosingInAComboSelectsAndClicks) {
    int clicks = 0;
    screen.cmbSpeed.onClick = [&] { ++clicks; };
    ASSERT_EQ(screen.cmbSpeed.listIndex(), 1);
    QTest::keyClick(widget<QComboBox>("cmbSpeed"), Qt::Key_Down);
    EXPECT_EQ(screen.cmbSpeed.listIndex(), 2);
    EXPECT_EQ(screen.cmbSpeed.text(), "38400");
    EXPECT_EQ(clicks, 1);
}

TEST_F(OperatorInWindow, ChoosingADriveChangesTheDrive) {
    int changes = 0, clicks = 0;
    screen.Drive1.setDrive("c:");
    screen.Drive1.onChange = [&] { ++changes; };
    screen.Drive1.onClick = [&] { ++clicks; };
    QTest::keyClick(widget<QComboBox>("Drive1"), Qt::Key_Down);
    EXPECT_EQ(screen.Drive1.drive(), "t:");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(clicks, 0) << "a drive list raises Change only";
}

TEST_F(OperatorInWindow, ADriveThatIsNotReadyGoesBackOnScreen) {
    screen.Drive1.setDrive("c:");
    // As the main screen does when a drive is not ready: back to the former.
    screen.Drive1.onChange = [&] {
        if (screen.Drive1.drive() == "t:")
            screen.Drive1.setDrive("c:");
    };
    auto* drives = widget<QComboBox>("Drive1");
    QTest::keyClick(drives, Qt::Key_Down);
    EXPECT_EQ(screen.Drive1.drive(), "c:");
    EXPECT_EQ(drives->currentText(), "c:");
}

TEST_F(OperatorInWindow, ListClickSelectsAndClicksOnce) {
    int clicks = 0, doubles = 0;
    screen.File1.onClick = [&] { ++clicks; };
    screen.File1.onDblClick = [&] { ++doubles; };
    auto* files = widget<QListWidget>("File1");
    clickRow(files, 1);
    EXPECT_EQ(screen.File1.listIndex(), 1);
    EXPECT_EQ(screen.File1.fileName(), "serie_n.hex");
    EXPECT_EQ(clicks, 1);
    clickRow(files, 1);
    EXPECT_EQ(clicks, 2) << "clicking the selected entry clicks again";
    clickRow(files, 2);
    EXPECT_EQ(screen.File1.listIndex(), 2);
    EXPECT_EQ(clicks, 3);

    QTest::mouseDClick(files->viewport(), Qt::LeftButton, {},
                       files->visualItemRect(files->item(2)).center());
    EXPECT_EQ(doubles, 1);
    EXPECT_EQ(screen.File1.listIndex(), 2);
}

TEST_F(OperatorInWindow, ListViewClickSelectsTheRowAndClicks) {
    int clicks = 0;
    screen.lstScales.onClick = [&] { ++clicks; };
    clickRow(widget<QTreeWidget>("lstScales"), 1);
    EXPECT_EQ(screen.lstScales.selectedRow(), 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(OperatorInWindow, PictureAndLabelClicks) {
    int pictureClicks = 0, labelClicks = 0;
    screen.picModel.onClick = [&] { ++pictureClicks; };
    screen.lblTitle.onClick = [&] { ++labelClicks; };
    QTest::mouseClick(window.widgetFor("picModel"), Qt::LeftButton);
    QTest::mouseClick(window.widgetFor("lblTitle"), Qt::LeftButton);
    EXPECT_EQ(pictureClicks, 1);
    EXPECT_EQ(labelClicks, 1);
}

TEST_F(OperatorInWindow, ClosingTheWindowUnloadsTheScreen) {
    int unloads = 0;
    screen.onUnload = [&] { ++unloads; };
    ASSERT_TRUE(window.isVisible());
    window.close();
    EXPECT_EQ(unloads, 1);
    EXPECT_FALSE(screen.loaded());
    EXPECT_FALSE(window.isVisible());
}

TEST_F(OperatorInWindow, EndingTheProgramOnCloseSurfacesFromTheWait) {
    screen.onUnload = [] { throw ProgramEnd{0}; };
    EXPECT_NO_THROW(window.close());
    EXPECT_FALSE(screen.loaded()) << "the window goes all the same";
    EXPECT_FALSE(window.isVisible());
    EXPECT_THROW(pump.doEvents(), ProgramEnd);
}

}  // namespace
}  // namespace fc::test
