#pragma once
// Interfaces of the object model that the application's forms implement; their operations are the
// application's. A form declares them with Q_INTERFACES, so that TOrbObject::QueryInterface and
// qobject_cast find them by GUID.

#include <QObject>

namespace norva {

// A form that carries out the edit actions (cut, copy, paste, delete, ...) for its selection.
class IEditActionForm {
 public:
  virtual ~IEditActionForm() = default;
};

// A form that can be docked into the application's dock panels.
class IDockClient {
 public:
  virtual ~IDockClient() = default;
};

}  // namespace norva

#define NORVA_IEditActionForm_IID "{5795F977-E532-4B63-9217-BA88D8A948D3}"
#define NORVA_IDockClient_IID "{4017CFF8-67C0-456F-B394-D74C52E1F1B7}"
Q_DECLARE_INTERFACE(norva::IEditActionForm, NORVA_IEditActionForm_IID)
Q_DECLARE_INTERFACE(norva::IDockClient, NORVA_IDockClient_IID)
