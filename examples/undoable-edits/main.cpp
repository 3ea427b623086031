// A model class whose edits are undoable: published properties, the setter contract, registration,
// one undo step per user action, undo and redo.
#include <OrbGlobal/OrbGlobal.h>

#include <QCoreApplication>

#include <cstdio>

namespace example {

class TZoneSettings : public norva::TOrbObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{3F1C9A20-5B7E-4D2A-9C61-0E8B7A4D2F11}")
  Q_CLASSINFO("SubComponent", "false")
  Q_PROPERTY(QString Name READ GetName WRITE SetName)
  Q_PROPERTY(int Volume READ GetVolume WRITE SetVolume)

 public:
  Q_INVOKABLE explicit TZoneSettings(norva::TOrbObject* owner = nullptr) : TOrbObject(owner) {}

  QString GetName() const { return mName; }
  // The contract in one call: record the old value under the property's name, store, notify.
  void SetName(const QString& name) { ChangeProperty("Name", mName, name); }
  int GetVolume() const { return mVolume; }
  void SetVolume(int volume) { ChangeProperty("Volume", mVolume, volume); }

 private:
  QString mName = QStringLiteral("Zone 1");
  int mVolume = 20;
};

void Print(const char* when, const TZoneSettings& zone) {
  std::printf("%-14s %s, volume %d\n", when, qPrintable(zone.GetName()), zone.GetVolume());
}

}  // namespace example

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  // Registration checks that every published property can be undone.
  norva::RegisterOrbObjectClass(&example::TZoneSettings::staticMetaObject);

  example::TZoneSettings zone;
  example::Print("start", zone);

  zone.SetName(QStringLiteral("Kitchen"));  // one user action: rename and turn up
  zone.SetVolume(35);
  norva::MaintainUndo();  // closes the action: one undo step
  example::Print("edited", zone);

  norva::Undo().Revert();
  example::Print("after undo", zone);
  norva::Redo().Revert();
  example::Print("after redo", zone);

  const bool ok = zone.GetName() == QStringLiteral("Kitchen") && zone.GetVolume() == 35;
  return ok ? 0 : 1;
}

#include "main.moc"
