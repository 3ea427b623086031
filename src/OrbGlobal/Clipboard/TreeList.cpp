#include <OrbGlobal/Clipboard/TreeList.h>

#include <OrbGlobal/Model/OrbObject.h>

namespace norva {

namespace {

QString Quoted(const TOrbObject& object) {
  return QLatin1Char('"') + object.GetName() + QLatin1Char('"');
}

}  // namespace

TTreeList::TTreeList(bool ownsObjects) : mOwnsObjects(ownsObjects) {}

TTreeList::~TTreeList() { Clear(); }

int TTreeList::Add(QObject* item) {
  mItems.append(item);
  return Count() - 1;
}

TTreeList* TTreeList::AddTreeNode() {
  auto* node = new TTreeList(mOwnsObjects);
  Add(node);
  return node;
}

void TTreeList::Delete(int index) {
  QObject* item = mItems.takeAt(index);
  Release(item);
}

void TTreeList::Clear() {
  while (!mItems.isEmpty()) Delete(Count() - 1);
}

void TTreeList::Release(QObject* item) const {
  if (mOwnsObjects || qobject_cast<TTreeList*>(item)) delete item;
}

// Every item after the first brings its separator, even when nothing stood before it.
QString TTreeList::GetText() const {
  QString result;
  bool joined = false;
  for (int i = 0; i < Count(); ++i) {
    QString part;
    if (const auto* object = qobject_cast<const TOrbObject*>(mItems.at(i))) {
      part = Quoted(*object);
    } else if (const auto* node = qobject_cast<const TTreeList*>(mItems.at(i));
               node && node->Count() > 0) {
      part = node->GetText();
    } else {
      continue;
    }
    if (i == 0) {
      result = part;
    } else {
      result += QStringLiteral(", ") + part;
      joined = true;
    }
  }
  if (joined) result = QLatin1Char('(') + result + QLatin1Char(')');
  if (const auto* associated = qobject_cast<const TOrbObject*>(mAssociatedObject)) {
    result = result.isEmpty() ? Quoted(*associated)
                              : Quoted(*associated) + QStringLiteral(" => ") + result;
  }
  return result;
}

}  // namespace norva
