#pragma once
// The CSV form of public protocol code databases: a header line
// "functionname,protocol,device,subdevice,function", then one code a line by protocol name and
// parameters, in files kept as Make/DeviceType/D,S.csv.

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the first line is that header (case and blanks around it ignored).
bool IsProtocolCsvFile(const QByteArray& bytes);

// One entry a line ("line 4"), a protocol code with D = device, S = subdevice (absent when empty or
// -1) and F = function. When `path` ends in Make/DeviceType/D,S.csv, the make is Make and the model
// "DeviceType D,S"; otherwise the file names neither. Fields may be in double quotes (a doubled
// quote inside stands for one). Refused: a line without five fields, an empty name or protocol, a
// device or function that is no whole number.
TCodeFileEntries ReadProtocolCsvFile(const QByteArray& bytes, const QString& path);

}  // namespace norva
