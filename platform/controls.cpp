#include "platform/controls.h"

#include "platform/runtime_error.h"
#include "platform/screen.h"

namespace fc {

Control::Control(Screen& screen, Kind kind, std::string name, Frame* container)
    : screen_(screen), kind_(kind), name_(std::move(name)), container_(container) {
    screen_.enrol(*this);
}

void Control::setVisible(bool v) {
    if (visible_ == v)
        return;
    visible_ = v;
    changed();
}

void Control::setEnabled(bool e) {
    if (enabled_ == e)
        return;
    enabled_ = e;
    changed();
}

bool Control::reachable() const {
    for (const Control* c = this; c != nullptr; c = c->container()) {
        if (!c->visible() || !c->enabled())
            return false;
    }
    return true;
}

void Control::setCaption(const std::string& c) {
    if (caption_ == c)
        return;
    caption_ = c;
    changed();
}

void Control::setBackColor(std::int32_t colour) {
    if (backColor_ == colour)
        return;
    backColor_ = colour;
    changed();
}

void Control::setFocus() {
    screen_.setFocused(this);
}

bool Control::hasFocus() const {
    return screen_.focused() == this;
}

void Control::click() {
    if (onClick)
        onClick();
}

void Control::dblClick() {
    if (onDblClick)
        onDblClick();
}

void Control::keyPress(Integer keyAscii) {
    if (onKeyPress)
        onKeyPress(keyAscii);
}

void Control::addObserver(std::function<void(Control&)> observer) {
    observers_.push_back(std::move(observer));
}

void Control::changed() {
    for (auto& observer : observers_) observer(*this);
}

void TextBox::setText(const std::string& t) {
    if (t == text())
        return;
    selStart_ = 0;
    selLength_ = 0;
    setCaption(t);
    if (onChange)
        onChange();
}

void TextBox::selectAll() {
    selStart_ = 0;
    selLength_ = static_cast<int>(text().size());
    changed();
}

void OptionButton::setValue(bool v) {
    if (value_ == v)
        return;
    value_ = v;
    if (v) {
        for (Control* other : screen().controls()) {
            if (other != this && other->kind() == Kind::OptionButton &&
                other->container() == container()) {
                static_cast<OptionButton*>(other)->setValue(false);
            }
        }
    }
    changed();
    if (v)
        click();
}

void CheckBox::setValue(int v) {
    if (v < 0 || v > 2)
        throw RuntimeError(err::kInvalidPropertyValue);
    if (value_ == v)
        return;
    value_ = v;
    changed();
    click();
}

void PictureBox::setPicture(const std::string& p) {
    if (picture_ == p)
        return;
    picture_ = p;
    changed();
}

void PictureBox::setSize(int w, int h) {
    if (width_ == w && height_ == h)
        return;
    width_ = w;
    height_ = h;
    changed();
}

void ProgressBar::setMin(Long v) {
    if (v > max_)
        throw RuntimeError(err::kInvalidPropertyValue);
    min_ = v;
    if (value_ < min_)
        value_ = min_;
    changed();
}

void ProgressBar::setMax(Long v) {
    if (v < min_)
        throw RuntimeError(err::kInvalidPropertyValue);
    max_ = v;
    if (value_ > max_)
        value_ = max_;
    changed();
}

void ProgressBar::setValue(Long v) {
    if (v < min_ || v > max_)
        throw RuntimeError(err::kInvalidPropertyValue);
    if (value_ == v)
        return;
    value_ = v;
    changed();
}

void ComboBox::clear() {
    items_.clear();
    listIndex_ = -1;
    setCaption("");
    changed();
}

void ComboBox::addItem(const std::string& text) {
    items_.push_back(Item{text, 0});
    changed();
}

void ComboBox::removeItem(int index) {
    if (index < 0 || index >= listCount())
        throw RuntimeError(err::kInvalidProcedureCall);
    items_.erase(items_.begin() + index);
    if (listIndex_ >= listCount())
        listIndex_ = -1;
    changed();
}

const std::string& ComboBox::list(int index) const {
    static const std::string empty;
    if (index < 0 || index >= listCount())
        return empty;
    return items_[index].text;
}

Long ComboBox::itemData(int index) const {
    if (index < 0 || index >= listCount())
        throw RuntimeError(381, "Invalid property array index");
    return items_[index].data;
}

void ComboBox::setItemData(int index, Long data) {
    if (index < 0 || index >= listCount())
        throw RuntimeError(381, "Invalid property array index");
    items_[index].data = data;
}

void ComboBox::setListIndex(int index) {
    if (index < -1 || index >= listCount())
        throw RuntimeError(err::kInvalidPropertyValue);
    if (index == listIndex_)
        return;
    listIndex_ = index;
    setCaption(list(index));
    changed();
    click();
}

void ComboBox::setText(const std::string& t) {
    if (t == text())
        return;
    setCaption(t);
    if (onChange)
        onChange();
}

void ListView::setColumns(const std::vector<std::string>& headers) {
    columns_ = headers;
    widths_.clear();
    changed();
}

void ListView::setColumnWidths(const std::vector<int>& twips) {
    widths_ = twips;
    changed();
}

void ListView::setFullRowSelect(bool on) {
    fullRowSelect_ = on;
    changed();
}

void ListView::clearRows() {
    rows_.clear();
    icons_.clear();
    selected_ = -1;
    changed();
}

void ListView::addRow(const std::vector<std::string>& texts) {
    rows_.push_back(texts);
    icons_.push_back(0);
    changed();
}

void ListView::setCell(int row, int column, const std::string& text) {
    if (row < 0 || row >= static_cast<int>(rows_.size()) || column < 0) {
        throw RuntimeError(35600, "Index out of bounds");
    }
    auto& cells = rows_[row];
    if (static_cast<int>(cells.size()) <= column)
        cells.resize(column + 1);
    cells[column] = text;
    changed();
}

void ListView::setSmallIcon(int row, int icon) {
    if (row < 0 || row >= static_cast<int>(rows_.size()))
        throw RuntimeError(35600, "Index out of bounds");
    if (icons_[row] == icon)
        return;
    icons_[row] = icon;
    changed();
}

int ListView::smallIcon(int row) const {
    return row >= 0 && row < static_cast<int>(icons_.size()) ? icons_[row] : 0;
}

void ListView::setSelectedRow(int row) {
    if (row == selected_)
        return;
    selected_ = row;
    changed();
}

void DriveList::setDrive(const std::string& d) {
    if (d == drive_)
        return;
    drive_ = d;
    changed();
    if (onChange)
        onChange();
}

void DirList::setPath(const std::string& p) {
    if (p == path_)
        return;
    path_ = p;
    changed();
    if (onChange)
        onChange();
}

void FileList::setPath(const std::string& p) {
    if (p == path_)
        return;
    path_ = p;
    changed();
}

const std::string& FileList::fileName() const {
    return list(listIndex());
}

}  // namespace fc
