#include "platform/qt/list_sync.h"

#include <QApplication>
#include <QComboBox>
#include <QListWidget>
#include <QStyle>
#include <QTreeWidget>

#include "platform/controls.h"
#include "platform/qt/qt_text.h"

namespace fc {

namespace {

QStringList entriesOf(const ComboBox& list) {
    QStringList entries;
    for (int i = 0; i < list.listCount(); ++i) entries << toQString(list.list(i));
    return entries;
}

QStringList toQStringList(const std::vector<std::string>& texts) {
    QStringList out;
    for (const std::string& t : texts) out << toQString(t);
    return out;
}

QStringList headersOf(const QTreeWidget* tree) {
    QStringList out;
    const QTreeWidgetItem* header = tree->headerItem();
    for (int c = 0; c < tree->columnCount(); ++c) out << header->text(c);
    return out;
}

void syncRow(QTreeWidgetItem* item, const QStringList& cells) {
    for (int c = 0; c < cells.size(); ++c) {
        if (item->text(c) != cells[c])
            item->setText(c, cells[c]);
    }
    for (int c = cells.size(); c < item->columnCount(); ++c) item->setText(c, QString());
}

// The row's small icon: 1 a tick for done, 2 a cross for failed, drawn from
// the style's standard pictures so that no file is needed.
void syncIcon(QTreeWidgetItem* item, int icon) {
    const QVariant want(icon);
    if (item->data(0, Qt::UserRole) == want)
        return;
    item->setData(0, Qt::UserRole, want);
    QStyle* style = QApplication::style();
    if (icon == 1) {
        item->setIcon(0, style->standardIcon(QStyle::SP_DialogApplyButton));
    } else if (icon == 2) {
        item->setIcon(0, style->standardIcon(QStyle::SP_MessageBoxCritical));
    } else {
        item->setIcon(0, QIcon());
    }
}

void syncRows(const ListView& view, QTreeWidget* tree) {
    const auto& rows = view.rows();
    const int count = static_cast<int>(rows.size());
    while (tree->topLevelItemCount() > count) delete tree->takeTopLevelItem(count);
    for (int r = 0; r < count; ++r) {
        QTreeWidgetItem* item = tree->topLevelItem(r);
        if (item == nullptr)
            item = new QTreeWidgetItem(tree);
        syncRow(item, toQStringList(rows[r]));
        syncIcon(item, view.smallIcon(r));
    }
}

// A drive list shows its drive ("c:", or an entry such as "c: [SYSTEM]"
// that starts with it); other lists their selected entry.
int shownIndex(const ComboBox& list, const QStringList& entries) {
    if (list.kind() != Control::Kind::DriveList)
        return list.listIndex();
    const QString drive = toQString(static_cast<const DriveList&>(list).drive());
    if (drive.isEmpty())
        return list.listIndex();
    for (int i = 0; i < entries.size(); ++i) {
        if (entries[i].startsWith(drive, Qt::CaseInsensitive))
            return i;
    }
    return -1;
}

}  // namespace

void syncCombo(const ComboBox& list, QComboBox* widget) {
    const QStringList entries = entriesOf(list);
    QStringList shown;
    for (int i = 0; i < widget->count(); ++i) shown << widget->itemText(i);
    if (shown != entries) {
        widget->clear();
        widget->addItems(entries);
    }
    const int index = shownIndex(list, entries);
    if (widget->currentIndex() != index)
        widget->setCurrentIndex(index);
}

void syncList(const ComboBox& list, QListWidget* widget) {
    const QStringList entries = entriesOf(list);
    QStringList shown;
    for (int i = 0; i < widget->count(); ++i) shown << widget->item(i)->text();
    if (shown != entries) {
        widget->clear();
        widget->addItems(entries);
    }
    if (widget->currentRow() != list.listIndex())
        widget->setCurrentRow(list.listIndex());
    if (list.listIndex() < 0)
        widget->clearSelection();
}

void syncListView(const ListView& view, QTreeWidget* widget) {
    const QStringList headers = toQStringList(view.columns());
    if (headersOf(widget) != headers) {
        widget->setColumnCount(static_cast<int>(headers.size()));
        widget->setHeaderLabels(headers);
    }
    // Twips to pixels at the classic 15 twips a pixel.
    const std::vector<int>& widths = view.columnWidths();
    for (int c = 0; c < static_cast<int>(widths.size()) && c < widget->columnCount(); ++c) {
        if (widget->columnWidth(c) != widths[c] / 15)
            widget->setColumnWidth(c, widths[c] / 15);
    }
    syncRows(view, widget);
    QTreeWidgetItem* selected = widget->topLevelItem(view.selectedRow());
    if (widget->currentItem() != selected)
        widget->setCurrentItem(selected);
    if (selected == nullptr)
        widget->clearSelection();
}

}  // namespace fc
