#pragma once
// The file dialogs the studio asks the installer with: what each is for decides its title, its
// file types, whether it opens or saves, and what its button says.

#include <QString>

#include <memory>

class QFileDialog;
class QWidget;

namespace studio {

enum class TFileRole {
  OpenKeypad,
  SaveKeypad,
  OpenLibrary,
  OpenPublicLibrary,
  SaveLibrary,
  ImportCodes,
  ExportCodes,
  ExportBusLog
};

std::unique_ptr<QFileDialog> CreateFileDialog(QWidget* parent, TFileRole role);
// The path the installer chose in the dialog for `role`; "" when cancelled.
QString AskForFile(QWidget* parent, TFileRole role);
// `path` with the keypad configuration extension added when it has none.
QString WithKeypadExtension(const QString& path);

}  // namespace studio
