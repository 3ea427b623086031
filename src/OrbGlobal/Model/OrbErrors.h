#pragma once
// Failures of the object model: mistakes of the user, list range errors, conversions.

#include <NorvaGlobal/Exceptions.h>

namespace norva {

// A mistake of the user (deleting or moving a read-only object); shown to them as it stands.
class EUserError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

// An index, count or capacity outside what a list allows; the list is unchanged.
class EListError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

// Text that is not in the form a conversion expects (a malformed GUID, a number or date text that
// the files do not use), or an assignment between classes that cannot take each other's values.
class EConvertError : public ENorvaError {
 public:
  using ENorvaError::ENorvaError;
};

}  // namespace norva
