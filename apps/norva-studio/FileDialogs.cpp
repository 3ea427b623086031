#include "FileDialogs.h"

#include <IR_Database/CodeImport.h>
#include <KeypadDevice/AutoSaveNames.h>

#include <QCoreApplication>
#include <QFileDialog>

namespace studio {

namespace {

QString Tr(const char* text) { return QCoreApplication::translate("studio::FileDialogs", text); }

struct TDialogShape {
  const char* Title;
  const char* Filter;
  QFileDialog::AcceptMode Mode;
  const char* Button;
};

TDialogShape ShapeOf(TFileRole role) {
  const char* const keypads = QT_TR_NOOP("Keypad configurations (*.keycfg)");
  const char* const libraries = QT_TR_NOOP("IR libraries (*.xml)");
  switch (role) {
    case TFileRole::OpenKeypad:
      return {QT_TR_NOOP("Open configuration"), keypads, QFileDialog::AcceptOpen,
              QT_TR_NOOP("Open")};
    case TFileRole::SaveKeypad:
      return {QT_TR_NOOP("Save configuration"), keypads, QFileDialog::AcceptSave,
              QT_TR_NOOP("Save")};
    case TFileRole::OpenLibrary:
      // A name that does not exist yet makes a new, empty library.
      return {QT_TR_NOOP("Open or create an IR library"), libraries, QFileDialog::AcceptSave,
              QT_TR_NOOP("Open or create")};
    case TFileRole::OpenPublicLibrary:
      return {QT_TR_NOOP("Open the public IR library (read-only, with the built-in makes)"),
              libraries, QFileDialog::AcceptOpen, QT_TR_NOOP("Open read-only")};
    case TFileRole::SaveLibrary:
      return {QT_TR_NOOP("Save the IR library as"), libraries, QFileDialog::AcceptSave,
              QT_TR_NOOP("Save")};
    case TFileRole::ImportCodes:
      // Any file: the import recognises a code file by its content, whatever its name.
      return {QT_TR_NOOP("Import codes"), QT_TR_NOOP("Code files (%1) (*)"),
              QFileDialog::AcceptOpen, QT_TR_NOOP("Import")};
    case TFileRole::ExportCodes:
      return {QT_TR_NOOP("Export codes"),
              QT_TR_NOOP("Pronto lines (*.txt *.tsv);;Girr documents (*.girr);;Flipper IR files "
                         "(*.ir)"),
              QFileDialog::AcceptSave, QT_TR_NOOP("Export")};
    case TFileRole::ExportBusLog:
      return {QT_TR_NOOP("Export the bus log"), QT_TR_NOOP("Tab-separated text (*.tsv)"),
              QFileDialog::AcceptSave, QT_TR_NOOP("Export")};
  }
  return {"", "", QFileDialog::AcceptOpen, ""};
}

}  // namespace

std::unique_ptr<QFileDialog> CreateFileDialog(QWidget* parent, TFileRole role) {
  const TDialogShape shape = ShapeOf(role);
  QString filter = Tr(shape.Filter);
  if (role == TFileRole::ImportCodes) filter = filter.arg(norva::CodeFileFormatNames());
  auto dialog = std::make_unique<QFileDialog>(parent, Tr(shape.Title), QString(), filter);
  dialog->setAcceptMode(shape.Mode);
  dialog->setLabelText(QFileDialog::Accept, Tr(shape.Button));
  if (role == TFileRole::OpenLibrary) dialog->setOption(QFileDialog::DontConfirmOverwrite);
  if (role == TFileRole::SaveKeypad) dialog->setDefaultSuffix(QStringLiteral("keycfg"));
  if (role == TFileRole::ExportBusLog) dialog->setDefaultSuffix(QStringLiteral("tsv"));
  return dialog;
}

QString AskForFile(QWidget* parent, TFileRole role) {
  const std::unique_ptr<QFileDialog> dialog = CreateFileDialog(parent, role);
  if (dialog->exec() != QDialog::Accepted || dialog->selectedFiles().isEmpty()) return {};
  return dialog->selectedFiles().first();
}

QString WithKeypadExtension(const QString& path) {
  const QString extension = QString::fromLatin1(norva::KeypadFileExtension);
  return path.isEmpty() || path.endsWith(extension, Qt::CaseInsensitive) ? path : path + extension;
}

}  // namespace studio
