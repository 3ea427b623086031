#include <IR/CommandObjectList.h>

#include <IR/CommandClasses.h>
#include <IR/IRStream.h>
#include <NorvaGlobal/Exceptions.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Undo/UndoControl.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

#include <algorithm>
#include <cstring>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace norva {

namespace {

// The command class of each element name met while reading one list: a list holds thousands of
// elements of a handful of names, which are looked up once each.
class TElementClasses {
 public:
  TOrbObjectClass Of(const char* name) {
    for (const auto& [known, cls] : mKnown) {
      if (std::strcmp(known.c_str(), name) == 0) return cls;
    }
    const TOrbObjectClass cls = CommandClassOfElement(QString::fromUtf8(name));
    mKnown.emplace_back(name, cls);
    return cls;
  }

 private:
  std::vector<std::pair<std::string, TOrbObjectClass>> mKnown;
};

// The children of a list element that are commands, in the order they are read. An index counts
// among the element's nodes of every kind, so one at or past their number is ignored.
std::vector<std::pair<pugi::xml_node, TOrbObjectClass>> CommandElements(pugi::xml_node element,
                                                                        bool indexed) {
  std::vector<std::tuple<long long, pugi::xml_node, TOrbObjectClass>> found;
  TElementClasses classes;
  long long nodeCount = 0;
  long long order = 0;
  for (pugi::xml_node child : element.children()) {
    ++nodeCount;
    if (child.type() != pugi::node_element) continue;
    const TOrbObjectClass cls = classes.Of(child.name());
    if (!cls) continue;
    long long key = order++;
    if (indexed) {
      const std::optional<long long> index = AttributeNumber<long long>(child.attribute("index"));
      if (!index || *index < 0) continue;
      key = *index;
    }
    found.emplace_back(key, child, cls);
  }
  std::erase_if(found, [nodeCount](const auto& item) { return std::get<0>(item) >= nodeCount; });
  const auto byKey = [](const auto& a, const auto& b) { return std::get<0>(a) < std::get<0>(b); };
  if (!std::is_sorted(found.begin(), found.end(), byKey))
    std::stable_sort(found.begin(), found.end(), byKey);
  std::vector<std::pair<pugi::xml_node, TOrbObjectClass>> elements;
  elements.reserve(found.size());
  for (const auto& [key, child, cls] : found) elements.emplace_back(child, cls);
  return elements;
}

}  // namespace

TCommandObjectList::TCommandObjectList(TOrbObject* owner) : TCommandObjectList(true, owner) {}

TCommandObjectList::TCommandObjectList(bool ownsCommands, TOrbObject* owner)
    : TOrbObject(owner), mCommands(ownsCommands, this) {
  // Adding, removing or moving a command is a change of the list, heard by its owners.
  mCommands.SetUpdateOwner(true);
}

std::unique_ptr<TCommandObjectList> TCommandObjectList::CreateReferenceList(TOrbObject* owner) {
  return std::unique_ptr<TCommandObjectList>(new TCommandObjectList(false, owner));
}

TCommandObject* TCommandObjectList::GetCommand(int index) const {
  return static_cast<TCommandObject*>(mCommands.Get(index));
}

int TCommandObjectList::GetIRStreamCount() const {
  return static_cast<int>(std::count_if(mCommands.begin(), mCommands.end(), [](TOrbObject* item) {
    return qobject_cast<TIRStream*>(item) != nullptr;
  }));
}

TIRStream* TCommandObjectList::GetIRStream(int index) const {
  for (TOrbObject* item : mCommands) {
    auto* stream = qobject_cast<TIRStream*>(item);
    if (stream && index-- == 0) return stream;
  }
  return nullptr;
}

void TCommandObjectList::AddCommandObject(TCommandObject* command) { mCommands.Add(command); }

TCommandObject* TCommandObjectList::AddNewCommandObject(const TCommandObject* command) {
  if (!command) return nullptr;
  TCommandObject* added = AddNewCommandObject(command->GetClass());
  added->Assign(command);
  return added;
}

TCommandObject* TCommandObjectList::AddNewCommandObject(TOrbObjectClass commandClass) {
  CheckOwnsCommands();
  TOrbObject* created = ConstructOrbObject(commandClass, this);
  auto* command = qobject_cast<TCommandObject*>(created);
  if (!command) {
    delete created;
    throw ENorvaError(QStringLiteral("%1 is not a command class").arg(ClassNameOf(commandClass)));
  }
  mCommands.Add(command);
  return command;
}

void TCommandObjectList::CheckOwnsCommands() const {
  if (!mCommands.OwnsObjects())
    throw ENorvaError(QStringLiteral("A reference list cannot hold new commands"));
}

void TCommandObjectList::Clear() { mCommands.Clear(); }

TOrbObjectList* TCommandObjectList::GetChildList(const TOrbObject* /*child*/) const {
  return &mCommands;
}

void TCommandObjectList::AssignTo(QObject* dest) const {
  const TAssignTarget<TCommandObjectList> list(this, dest);
  if (list) list->Clear();
  TOrbObject::AssignTo(dest);
  if (!list) return;
  for (TOrbObject* item : mCommands) list->AddNewCommandObject(static_cast<TCommandObject*>(item));
}

void TCommandObjectList::Save(pugi::xml_node element, bool indexed) const {
  for (int i = 0; i < mCommands.Count(); ++i) {
    const TCommandObject* command = GetCommand(i);
    if (!command || command->IsEmpty()) continue;
    pugi::xml_node child = AddXMLDOMElement(element, CommandElementName(command->GetClass()));
    if (indexed) child.append_attribute("index") = i;
    command->Save(child);
  }
}

void TCommandObjectList::Load(pugi::xml_node element, bool indexed) {
  CheckOwnsCommands();
  std::vector<std::unique_ptr<TCommandObject>> loaded = ReadCommands(element, indexed);
  BeginUpdate();
  mCommands.Clear();
  mCommands.SetCapacity(static_cast<int>(loaded.size()));
  for (std::unique_ptr<TCommandObject>& command : loaded) mCommands.Add(command.release());
  EndUpdate();
}

std::vector<std::unique_ptr<TCommandObject>> TCommandObjectList::ReadCommands(
    pugi::xml_node element, bool indexed) {
  // Read into commands of their own first: a failure then leaves the list untouched. A command
  // being read is not yet part of anything, so its property changes are neither recorded for
  // undo nor heard by the list's owners.
  const TUndoSuspended undoOff;
  const std::vector<std::pair<pugi::xml_node, TOrbObjectClass>> elements =
      CommandElements(element, indexed);
  std::vector<std::unique_ptr<TCommandObject>> loaded;
  loaded.reserve(elements.size());
  for (const auto& [child, cls] : elements) {
    std::unique_ptr<TOrbObject> created(ConstructOrbObject(cls, this));
    loaded.emplace_back(static_cast<TCommandObject*>(created.release()));
    TCommandObject& command = *loaded.back();
    command.BeginUpdate();
    command.Load(child);
    command.EndUpdate(false);
  }
  return loaded;
}

}  // namespace norva
