#pragma once
// Girr, the XML format in which public IR libraries exchange remotes: "remotes" holding "remote"s
// (manufacturer and model) holding "commandSet"s of "command"s, each given as Pronto hex ("ccf"),
// as raw durations ("raw": intro, repeat and ending sequences at a frequency) or by protocol and
// parameters ("parameters", which a command set passes on to its commands).

#include <IR_Database/CodeFileEntries.h>

namespace norva {

// Whether the document element is one Girr allows as root: remotes, remote, commandSet or command.
bool IsGirrFile(const QByteArray& bytes);

// One entry per command ("command 3 (Power)"), its make and model those of its remote (the model
// falls back on the remote's name). Of the forms a command gives, raw durations are taken first,
// then Pronto hex, then protocol parameters. Refused: a command without name or with none of
// them, an ending sequence (a stream has no place for it), parameters other than D, S, F and T; a
// document that is not XML is one refusal at its line and position.
TCodeFileEntries ReadGirrFile(const QByteArray& bytes, const QString& path);

}  // namespace norva
