// The widgets of a screen window follow every change of the model.
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>

#include "demo_window_fixture.h"
#include "platform/qt/picture_label.h"

namespace fc::test {
namespace {

using ScreenWindowFollows = DemoWindowTest;

TEST_F(ScreenWindowFollows, CaptionsAndTexts) {
    EXPECT_EQ(widget<QLabel>("lblTitle")->text(), "Select Communication Way");
    EXPECT_EQ(widget<QPushButton>("cmdGo")->text(), "Next >");
    EXPECT_EQ(widget<QGroupBox>("frWay")->title(), "Way");
    EXPECT_EQ(widget<QRadioButton>("optSerial")->text(), "RS-232");

    screen.lblTitle.setCaption("Processing File ...");
    screen.txtName.setText("192.168.0.10");
    screen.cmdGo.setCaption("Again");
    screen.frWay.setCaption("Serial port");
    EXPECT_EQ(widget<QLabel>("lblTitle")->text(), "Processing File ...");
    EXPECT_EQ(widget<QLineEdit>("txtName")->text(), "192.168.0.10");
    EXPECT_EQ(widget<QPushButton>("cmdGo")->text(), "Again");
    EXPECT_EQ(widget<QGroupBox>("frWay")->title(), "Serial port");
}

TEST_F(ScreenWindowFollows, VisibleAndEnabled) {
    auto* button = widget<QPushButton>("cmdGo");
    EXPECT_TRUE(button->isVisible());
    screen.cmdGo.setVisible(false);
    EXPECT_FALSE(button->isVisible());
    screen.cmdGo.setVisible(true);
    EXPECT_TRUE(button->isVisible());

    screen.cmdGo.setEnabled(false);
    EXPECT_FALSE(button->isEnabled());

    // A control inside a hidden or disabled frame goes with it.
    screen.frWay.setVisible(false);
    EXPECT_FALSE(widget<QRadioButton>("optSerial")->isVisible());
    screen.frWay.setVisible(true);
    screen.frWay.setEnabled(false);
    EXPECT_FALSE(widget<QRadioButton>("optSerial")->isEnabled());
}

TEST_F(ScreenWindowFollows, OptionAndCheckValues) {
    screen.optSerial.setValue(true);
    EXPECT_TRUE(widget<QRadioButton>("optSerial")->isChecked());
    screen.optEthernet.setValue(true);
    EXPECT_TRUE(widget<QRadioButton>("optEthernet")->isChecked());
    EXPECT_FALSE(widget<QRadioButton>("optSerial")->isChecked());

    screen.chkAdsl.setValue(1);
    EXPECT_EQ(widget<QCheckBox>("chkAdsl")->checkState(), Qt::Checked);
    screen.chkAdsl.setValue(2);
    EXPECT_EQ(widget<QCheckBox>("chkAdsl")->checkState(), Qt::PartiallyChecked);
    screen.chkAdsl.setValue(0);
    EXPECT_EQ(widget<QCheckBox>("chkAdsl")->checkState(), Qt::Unchecked);
}

TEST_F(ScreenWindowFollows, ProgressRangeAndValue) {
    auto* bar = widget<QProgressBar>("Barra");
    EXPECT_EQ(bar->value(), 40);
    screen.Barra.setMax(3000);
    screen.Barra.setMin(10);
    screen.Barra.setValue(2999);
    EXPECT_EQ(bar->minimum(), 10);
    EXPECT_EQ(bar->maximum(), 3000);
    EXPECT_EQ(bar->value(), 2999);
}

TEST_F(ScreenWindowFollows, ComboEntriesAndIndex) {
    auto* combo = widget<QComboBox>("cmbSpeed");
    ASSERT_EQ(combo->count(), 4);
    EXPECT_EQ(combo->itemText(0), "115200");
    EXPECT_EQ(combo->currentIndex(), 1);
    screen.cmbSpeed.setListIndex(3);
    EXPECT_EQ(combo->currentIndex(), 3);
    EXPECT_EQ(combo->currentText(), "19200");
    screen.cmbSpeed.clear();
    EXPECT_EQ(combo->count(), 0);
    screen.cmbSpeed.addItem("9600");
    EXPECT_EQ(combo->count(), 1);
    EXPECT_EQ(combo->currentIndex(), -1);

    // A drive list shows its drive.
    auto* drives = widget<QComboBox>("Drive1");
    EXPECT_EQ(drives->count(), 2);
    screen.Drive1.setDrive("t:");
    EXPECT_EQ(drives->currentText(), "t:");
    screen.Drive1.setDrive("C:");
    EXPECT_EQ(drives->currentText(), "c:");
}

TEST_F(ScreenWindowFollows, FolderAndFileLists) {
    auto* files = widget<QListWidget>("File1");
    ASSERT_EQ(files->count(), 3);
    EXPECT_EQ(files->item(2)->text(), "tr8200.hex");
    EXPECT_EQ(files->currentRow(), -1);
    screen.File1.setListIndex(2);
    EXPECT_EQ(files->currentRow(), 2);
    screen.File1.removeItem(0);
    EXPECT_EQ(files->count(), 2);
    EXPECT_EQ(files->item(0)->text(), "serie_n.hex");

    auto* dirs = widget<QListWidget>("Dir1");
    screen.Dir1.clear();
    screen.Dir1.addItem("Balanzas");
    ASSERT_EQ(dirs->count(), 1);
    EXPECT_EQ(dirs->item(0)->text(), "Balanzas");
}

TEST_F(ScreenWindowFollows, ListViewHeadersRowsAndSelection) {
    auto* tree = widget<QTreeWidget>("lstScales");
    ASSERT_EQ(tree->columnCount(), 2);
    EXPECT_EQ(tree->headerItem()->text(0), "Scale");
    EXPECT_EQ(tree->headerItem()->text(1), "IP Address");
    ASSERT_EQ(tree->topLevelItemCount(), 2);
    EXPECT_EQ(tree->topLevelItem(1)->text(1), "192.168.0.11");
    EXPECT_EQ(tree->selectionBehavior(), QAbstractItemView::SelectRows);

    screen.lstScales.setCell(0, 1, "10.0.0.7");
    EXPECT_EQ(tree->topLevelItem(0)->text(1), "10.0.0.7");
    screen.lstScales.addRow({"3", ""});
    EXPECT_EQ(tree->topLevelItemCount(), 3);
    screen.lstScales.setSelectedRow(2);
    EXPECT_EQ(tree->indexOfTopLevelItem(tree->currentItem()), 2);
    screen.lstScales.clearRows();
    EXPECT_EQ(tree->topLevelItemCount(), 0);
}

TEST_F(ScreenWindowFollows, BackColoursAndPictures) {
    auto* picture = qobject_cast<PictureLabel*>(window.widgetFor("picModel"));
    ASSERT_NE(picture, nullptr);
    // &HFF8080: blue FF, green 80, red 80.
    EXPECT_EQ(picture->colour(), QColor(0x80, 0x80, 0xFF));
    EXPECT_TRUE(picture->hasImage()) << "the test pictures hold demo-scale.svg";
    EXPECT_EQ(picture->sizeHint(), QSize(160, 120));

    screen.picModel.setPicture("no-such-picture");
    EXPECT_FALSE(picture->hasImage());
    screen.picModel.setBackColor(0x00FFFF);  // yellow
    EXPECT_EQ(picture->colour(), QColor(0xFF, 0xFF, 0x00));

    auto* label = widget<QLabel>("lblTitle");
    screen.lblTitle.setBackColor(0x0000FF);  // red
    EXPECT_EQ(label->palette().color(label->backgroundRole()), QColor(0xFF, 0, 0));
    EXPECT_TRUE(label->autoFillBackground());
    // Back to white is followed too, once the program has set a colour.
    screen.lblTitle.setBackColor(kColourWhite);
    EXPECT_EQ(label->palette().color(label->backgroundRole()), QColor(Qt::white));
}

TEST_F(ScreenWindowFollows, CaptionPointerFocusAndLoad) {
    EXPECT_EQ(window.windowTitle(), "Firmcast demo");
    screen.setCaption("Firmcast working on port COM1 ");
    EXPECT_EQ(window.windowTitle(), "Firmcast working on port COM1 ");

    screen.setMousePointer(11);
    EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
    screen.setMousePointer(13);
    EXPECT_EQ(window.cursor().shape(), Qt::BusyCursor);
    screen.setMousePointer(1);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
    screen.setMousePointer(11);
    screen.setMousePointer(0);
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor) << "the default pointer";

    screen.txtName.setFocus();
    EXPECT_EQ(window.focusWidget(), window.widgetFor("txtName"));
    screen.cmbSpeed.setFocus();
    EXPECT_EQ(window.focusWidget(), window.widgetFor("cmbSpeed"));

    EXPECT_TRUE(window.isVisible());
    screen.unload();
    EXPECT_FALSE(window.isVisible());
    screen.load();
    EXPECT_TRUE(window.isVisible());
}

TEST_F(ScreenWindowFollows, ModelChangesRaiseEachEventOnce) {
    // A change made by the program reaches the widget, and the widget's
    // signal does not come back to the model as an operator's action.
    int clicks = 0, changes = 0;
    for (Control* c : screen.controls()) {
        c->onClick = [&] { ++clicks; };
        c->onChange = [&] { ++changes; };
    }
    screen.cmbSpeed.setListIndex(2);
    EXPECT_EQ(clicks, 1);
    screen.optSerial.setValue(true);
    EXPECT_EQ(clicks, 2);
    screen.chkAdsl.setValue(1);
    EXPECT_EQ(clicks, 3);
    screen.File1.setListIndex(1);
    EXPECT_EQ(clicks, 4);
    screen.lstScales.setSelectedRow(1);
    EXPECT_EQ(clicks, 4);
    screen.txtName.setText("abc");
    EXPECT_EQ(changes, 1);
    screen.Dir1.setPath("C:\\Firmware");
    EXPECT_EQ(changes, 2);
    pump.doEvents();
    EXPECT_EQ(clicks, 4);
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace fc::test
