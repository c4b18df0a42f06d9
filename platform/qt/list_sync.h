// Copies the entries and the selection of the list models onto their
// widgets. Entries are rebuilt only when they differ, so a change of
// selection or of one cell costs no more than that.
#pragma once

class QComboBox;
class QListWidget;
class QTreeWidget;

namespace fc {

class ComboBox;
class ListView;

void syncCombo(const ComboBox& list, QComboBox* widget);
void syncList(const ComboBox& list, QListWidget* widget);
void syncListView(const ListView& view, QTreeWidget* widget);

}  // namespace fc
