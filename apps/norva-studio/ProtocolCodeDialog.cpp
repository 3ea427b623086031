#include "ProtocolCodeDialog.h"

#include <IR/IRHexCode.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace studio {

TProtocolCodeDialog::TProtocolCodeDialog(QWidget* parent)
    : QDialog(parent),
      mProtocol(new QComboBox),
      mD(new QLineEdit),
      mS(new QLineEdit),
      mF(new QLineEdit),
      mT(new QLineEdit),
      mHexCode(new QPlainTextEdit),
      mError(new QLabel),
      mButtons(new QDialogButtonBox(QDialogButtonBox::Cancel)) {
  setObjectName(QStringLiteral("protocolCode"));
  setWindowTitle(tr("New code from protocol"));
  mProtocol->addItems(norva::IRProtocolNames());
  mHexCode->setReadOnly(true);
  mHexCode->setObjectName(QStringLiteral("hexCode"));
  mError->setObjectName(QStringLiteral("error"));
  mError->setWordWrap(true);
  mError->setStyleSheet(QStringLiteral("color: #b00020"));
  auto* form = new QFormLayout(this);
  form->addRow(tr("Protocol:"), mProtocol);
  form->addRow(tr("Device (D):"), mD);
  form->addRow(tr("Sub-device (S):"), mS);
  form->addRow(tr("Function (F):"), mF);
  form->addRow(tr("Toggle (T):"), mT);
  form->addRow(tr("Hex code:"), mHexCode);
  form->addRow(mError);
  mAdd = mButtons->addButton(tr("&Add to the library"), QDialogButtonBox::AcceptRole);
  form->addRow(mButtons);
  connect(mButtons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(mButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(mProtocol, &QComboBox::currentTextChanged, this, &TProtocolCodeDialog::Encode);
  for (QLineEdit* field : {mD, mS, mF, mT})
    connect(field, &QLineEdit::textChanged, this, &TProtocolCodeDialog::Encode);
  Encode();
}

QLineEdit* TProtocolCodeDialog::Parameter(char name) const {
  switch (name) {
    case 'D': return mD;
    case 'S': return mS;
    case 'F': return mF;
    default: return mT;
  }
}

QString TProtocolCodeDialog::HexCodeText() const { return mHexCode->toPlainText(); }

QString TProtocolCodeDialog::ErrorText() const { return mError->text(); }

QString TProtocolCodeDialog::CodeName() const {
  norva::TIRDecode code;
  code.Protocol = mProtocol->currentText();
  code.Parameters = mParameters;
  return norva::DecodeText(code);
}

std::optional<std::int64_t> TProtocolCodeDialog::Value(char name, QString& error) const {
  const QString text = Parameter(name)->text().trimmed();
  if (text.isEmpty()) return std::nullopt;
  bool ok = false;
  const qlonglong value = text.toLongLong(&ok, 0);  // 0x.. reads as hexadecimal
  if (!ok && error.isEmpty()) error = tr("%1 is no number: %2").arg(QLatin1Char(name)).arg(text);
  return ok ? std::optional<std::int64_t>(value) : std::nullopt;
}

void TProtocolCodeDialog::Encode() {
  QString error;
  mParameters = {Value('D', error), Value('S', error), Value('F', error), Value('T', error)};
  mStream.reset();
  if (error.isEmpty()) {
    try {
      norva::TIRStreamData stream = norva::EncodeIRStream(mProtocol->currentText(), mParameters);
      mHexCode->setPlainText(norva::HexCodeOf(stream));
      mStream = stream;
    } catch (const std::exception& failure) {
      error = QString::fromUtf8(failure.what());
    }
  }
  if (!mStream) mHexCode->clear();
  mError->setText(error);
  mAdd->setEnabled(mStream.has_value());
}

}  // namespace studio
