#pragma once
// A new code from a protocol and its parameters (device, sub-device, function, toggle): the code
// the protocol sends is shown as a hex code before it is added, and what keeps it from being made
// (an unknown protocol, a missing or out-of-range parameter) is said in the dialog itself.

#include <IR/IRProtocols.h>

#include <QDialog>

#include <optional>

class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace studio {

class TProtocolCodeDialog : public QDialog {
  Q_OBJECT

 public:
  explicit TProtocolCodeDialog(QWidget* parent = nullptr);

  // The stream the protocol sends for the parameters typed; none while they make none.
  const std::optional<norva::TIRStreamData>& Stream() const { return mStream; }
  // "NEC1 D=4 F=8": the name the new code gets.
  QString CodeName() const;

  QComboBox* Protocol() const { return mProtocol; }
  // The field of a parameter: 'D', 'S', 'F' or 'T'.
  QLineEdit* Parameter(char name) const;
  QString HexCodeText() const;
  QString ErrorText() const;
  QPushButton* AddButton() const { return mAdd; }

 private:
  // Encodes what is typed, shows the hex code or why there is none.
  void Encode();
  std::optional<std::int64_t> Value(char name, QString& error) const;

  QComboBox* mProtocol;
  QLineEdit* mD;
  QLineEdit* mS;
  QLineEdit* mF;
  QLineEdit* mT;
  QPlainTextEdit* mHexCode;
  QLabel* mError;
  QDialogButtonBox* mButtons;
  QPushButton* mAdd = nullptr;
  std::optional<norva::TIRStreamData> mStream;
  norva::TIRProtocolParameters mParameters;
};

}  // namespace studio
