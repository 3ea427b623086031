#include <OrbGlobal/OrbClassRegistry.h>

#include <OrbGlobal/OrbGuid.h>

#include <memory>

namespace norva {

namespace {
// Created by the first registration.
std::unique_ptr<QList<TOrbObjectClass>> gRegistry;
}  // namespace

void RegisterOrbObjectClass(TOrbObjectClass cls) {
  if (!gRegistry) gRegistry = std::make_unique<QList<TOrbObjectClass>>();
  gRegistry->append(cls);
}

void RegisterOrbObjectClasses(const QList<const QMetaObject*>& classes) {
  for (const QMetaObject* cls : classes) {
    if (InheritsOrbObject(cls)) RegisterOrbObjectClass(cls);
  }
}

TOrbObjectClass GetOrbObjectClass(const QUuid& guid) {
  if (!gRegistry) return nullptr;
  for (TOrbObjectClass cls : *gRegistry) {
    if (ClassGUIDOf(cls) == guid) return cls;
  }
  return nullptr;
}

TOrbObjectClass GetOrbObjectClass(const QString& guidText) {
  return GetOrbObjectClass(StringToGUID(guidText));
}

const QList<TOrbObjectClass>* GetRegisteredOrbClasses() { return gRegistry.get(); }

}  // namespace norva
