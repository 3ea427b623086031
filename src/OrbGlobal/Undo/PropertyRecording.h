#pragma once
// The recording half of Updating: the undo entry for one named property, chosen by its kind.

namespace norva {

class TOrbObject;

// Records the current value of `propertyName`. An unknown name writes "Unpublished property " +
// the name to the debug output, a kind that cannot be recorded "Unsupported property type: " +
// the name; neither records anything. Properties holding other QObject classes record nothing.
void RecordPropertyChange(TOrbObject& object, const char* propertyName);

}  // namespace norva
