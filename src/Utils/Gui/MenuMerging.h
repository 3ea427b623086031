#pragma once
// Merging the main menu of a document window into the application's main menu, and taking it out
// again. Top-level menus are matched by their title without the '&' of the shortcut letter (case
// ignored): a match gets a separator and the source menu's actions appended; a source menu
// without match is added to the target as a whole, keeping its place in the source's order at the
// end. Unmerging takes out exactly what merging put in, so the target is as it was.

class QMenuBar;

namespace norva {

void MergeMenus(QMenuBar* target, QMenuBar* source);
// Nothing happens when `source` was not merged into `target`.
void UnmergeMenus(QMenuBar* target, QMenuBar* source);

}  // namespace norva
