// The controls of a screen model: plain objects holding the properties the
// system reads and writes, with the events the operator can raise. A control
// tells its observers whenever a property changes, so that a renderer (the Qt
// layer) keeps its widget in step; the system never sees the renderer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "platform/vb_types.h"

namespace fc {

class Screen;
class Frame;

// Colours as the classic &HBBGGRR long.
constexpr std::int32_t kColourWhite = 0xFFFFFF;
constexpr std::int32_t kColourHighlight = 0xFF8080;

class Control {
  public:
    enum class Kind {
        Label,
        TextBox,
        CommandButton,
        OptionButton,
        CheckBox,
        Frame,
        PictureBox,
        ProgressBar,
        ComboBox,
        ListView,
        DriveList,
        DirList,
        FileList
    };

    Control(Screen& screen, Kind kind, std::string name, Frame* container);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Kind kind() const { return kind_; }
    const std::string& name() const { return name_; }
    Screen& screen() const { return screen_; }
    Frame* container() const { return container_; }

    bool visible() const { return visible_; }
    void setVisible(bool v);
    bool enabled() const { return enabled_; }
    void setEnabled(bool e);
    // Visible and enabled here and in every container up to the screen: what
    // an operator can reach.
    bool reachable() const;

    // Caption or text, whichever the control shows.
    const std::string& caption() const { return caption_; }
    void setCaption(const std::string& c);

    std::int32_t backColor() const { return backColor_; }
    void setBackColor(std::int32_t colour);

    void setFocus();
    bool hasFocus() const;

    // Events, wired by the screen to its handlers.
    std::function<void()> onClick;
    std::function<void()> onDblClick;
    std::function<void()> onChange;
    std::function<void(Integer& keyAscii)> onKeyPress;

    // Raise an event as the operator (or the system, for Click) would.
    void click();
    void dblClick();
    void keyPress(Integer keyAscii);

    void addObserver(std::function<void(Control&)> observer);

  protected:
    void changed();

  private:
    Screen& screen_;
    Kind kind_;
    std::string name_;
    Frame* container_;
    bool visible_ = true;
    bool enabled_ = true;
    std::string caption_;
    std::int32_t backColor_ = kColourWhite;
    std::vector<std::function<void(Control&)>> observers_;
};

class Label : public Control {
  public:
    Label(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::Label, std::move(name), in) {}
};

class CommandButton : public Control {
  public:
    CommandButton(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::CommandButton, std::move(name), in) {}
};

class TextBox : public Control {
  public:
    TextBox(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::TextBox, std::move(name), in) {}
    const std::string& text() const { return caption(); }
    // Setting the text raises Change, as typing does, and leaves nothing selected.
    void setText(const std::string& t);
    // The selected part of the text (SelStart, SelLength).
    int selStart() const { return selStart_; }
    int selLength() const { return selLength_; }
    void selectAll();

  private:
    int selStart_ = 0;
    int selLength_ = 0;
};

class Frame : public Control {
  public:
    Frame(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::Frame, std::move(name), in) {}
};

// Option buttons of one container form a group: setting one clears the others.
// Setting the value to True from code raises Click, as the operator's click does.
class OptionButton : public Control {
  public:
    OptionButton(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::OptionButton, std::move(name), in) {}
    bool value() const { return value_; }
    void setValue(bool v);

  private:
    bool value_ = false;
};

// A check box's value is 0 (clear), 1 (ticked) or 2 (grey). A change of value
// raises Click.
class CheckBox : public Control {
  public:
    CheckBox(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::CheckBox, std::move(name), in) {}
    int value() const { return value_; }
    void setValue(int v);

  private:
    int value_ = 0;
};

class PictureBox : public Control {
  public:
    PictureBox(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::PictureBox, std::move(name), in) {}
    // The picture is named by its image resource ("scale-serie-w").
    const std::string& picture() const { return picture_; }
    void setPicture(const std::string& p);
    int width() const { return width_; }
    int height() const { return height_; }
    void setSize(int w, int h);

  private:
    std::string picture_;
    int width_ = 0;
    int height_ = 0;
};

// Min, Max and Value; a Value outside Min..Max is refused with error 380.
class ProgressBar : public Control {
  public:
    ProgressBar(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::ProgressBar, std::move(name), in) {}
    Long min() const { return min_; }
    Long max() const { return max_; }
    Long value() const { return value_; }
    void setMin(Long v);
    void setMax(Long v);
    void setValue(Long v);

  private:
    Long min_ = 0;
    Long max_ = 100;
    Long value_ = 0;
};

// A list of texts with one item data each, and a selected index (-1: none).
// Selecting an entry from code raises Click, as choosing it does.
class ComboBox : public Control {
  public:
    ComboBox(Screen& s, std::string name, Frame* in = nullptr, Kind kind = Kind::ComboBox)
        : Control(s, kind, std::move(name), in) {}
    void clear();
    void addItem(const std::string& text);
    void removeItem(int index);
    int listCount() const { return static_cast<int>(items_.size()); }
    const std::string& list(int index) const;
    Long itemData(int index) const;
    void setItemData(int index, Long data);
    int listIndex() const { return listIndex_; }
    void setListIndex(int index);
    // The text of the selected entry; for a combo box also what was typed.
    const std::string& text() const { return caption(); }
    void setText(const std::string& t);

  private:
    struct Item {
        std::string text;
        Long data = 0;
    };
    std::vector<Item> items_;
    int listIndex_ = -1;
};

// Rows of texts under column headers; the first text of a row is its item.
class ListView : public Control {
  public:
    ListView(Screen& s, std::string name, Frame* in = nullptr)
        : Control(s, Kind::ListView, std::move(name), in) {}
    void setColumns(const std::vector<std::string>& headers);
    const std::vector<std::string>& columns() const { return columns_; }
    // Column widths in twips, one for each header; empty: the view chooses.
    void setColumnWidths(const std::vector<int>& twips);
    const std::vector<int>& columnWidths() const { return widths_; }
    // A click selects the whole row, not only its first cell.
    bool fullRowSelect() const { return fullRowSelect_; }
    void setFullRowSelect(bool on);
    void clearRows();
    void addRow(const std::vector<std::string>& texts);
    void setCell(int row, int column, const std::string& text);
    const std::vector<std::vector<std::string>>& rows() const { return rows_; }
    // The small icon before a row's first cell: 0 none, else the number of a
    // picture in the view's icon list (1 done, 2 failed for the scale list).
    void setSmallIcon(int row, int icon);
    int smallIcon(int row) const;
    int selectedRow() const { return selected_; }
    void setSelectedRow(int row);

  private:
    std::vector<std::string> columns_;
    std::vector<int> widths_;
    bool fullRowSelect_ = false;
    std::vector<std::vector<std::string>> rows_;
    std::vector<int> icons_;
    int selected_ = -1;
};

// The drive, folder and file lists. Their contents come from the file system
// through the screen's code; the model keeps what they show.
class DriveList : public ComboBox {
  public:
    DriveList(Screen& s, std::string name, Frame* in = nullptr)
        : ComboBox(s, std::move(name), in, Kind::DriveList) {}
    // The drive, such as "c:"; a change raises Change.
    const std::string& drive() const { return drive_; }
    void setDrive(const std::string& d);

  private:
    std::string drive_;
};

class DirList : public ComboBox {
  public:
    DirList(Screen& s, std::string name, Frame* in = nullptr)
        : ComboBox(s, std::move(name), in, Kind::DirList) {}
    // The folder, such as "C:\Firmware"; a change raises Change.
    const std::string& path() const { return path_; }
    void setPath(const std::string& p);

  private:
    std::string path_;
};

class FileList : public ComboBox {
  public:
    FileList(Screen& s, std::string name, Frame* in = nullptr)
        : ComboBox(s, std::move(name), in, Kind::FileList) {}
    const std::string& path() const { return path_; }
    void setPath(const std::string& p);
    const std::string& fileName() const;

  private:
    std::string path_;
};

}  // namespace fc
