#include <Utils/Gui/MenuMerging.h>

#include <QAction>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

#include <map>
#include <utility>
#include <vector>

namespace norva {

namespace {

// One action merging put into a widget of the target, to be taken out again.
struct TMergedAction {
  QPointer<QWidget> Holder;
  QPointer<QAction> Action;
  bool OwnSeparator = false;  // created by merging, deleted by unmerging
};

using TMergeKey = std::pair<const QMenuBar*, const QMenuBar*>;

std::map<TMergeKey, std::vector<TMergedAction>>& Merges() {
  static std::map<TMergeKey, std::vector<TMergedAction>> merges;
  return merges;
}

QString PlainTitle(const QString& title) { return QString(title).remove(u'&').toCaseFolded(); }

QMenu* MenuTitled(QMenuBar* bar, const QString& title) {
  for (QAction* action : bar->actions()) {
    if (action->menu() && PlainTitle(action->text()) == PlainTitle(title)) return action->menu();
  }
  return nullptr;
}

}  // namespace

void MergeMenus(QMenuBar* target, QMenuBar* source) {
  if (!target || !source || target == source) return;
  UnmergeMenus(target, source);  // merging twice would add everything twice
  std::vector<TMergedAction>& merged = Merges()[{target, source}];
  for (QAction* top : source->actions()) {
    QMenu* sourceMenu = top->menu();
    QMenu* targetMenu = sourceMenu ? MenuTitled(target, top->text()) : nullptr;
    if (!targetMenu) {
      target->addAction(top);
      merged.push_back({target, top, false});
      continue;
    }
    QAction* separator = targetMenu->addSeparator();
    merged.push_back({targetMenu, separator, true});
    for (QAction* action : sourceMenu->actions()) {
      targetMenu->addAction(action);
      merged.push_back({targetMenu, action, false});
    }
  }
}

void UnmergeMenus(QMenuBar* target, QMenuBar* source) {
  const auto found = Merges().find({target, source});
  if (found == Merges().end()) return;
  for (const TMergedAction& item : found->second) {
    if (!item.Holder || !item.Action) continue;
    item.Holder->removeAction(item.Action);
    if (item.OwnSeparator) delete item.Action.data();
  }
  Merges().erase(found);
}

}  // namespace norva
