#include "CommandDetails.h"

#include "LibrarySearch.h"

#include <ButtonClasses/ButtonClasses.h>
#include <IR/IR.h>
#include <NorvaGlobal/EnumNames.h>

#include <QComboBox>
#include <QCompleter>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace studio {

namespace {

// What a format sends while the key is held.
QString RepeatsText(norva::TIRStreamFormat format) {
  switch (format) {
    case norva::RepeatWord1: return TCommandDetails::tr("one word, repeated while held");
    case norva::RepeatWord2:
      return TCommandDetails::tr("the first word once, the second repeated while held");
    case norva::RepeatBothWords: return TCommandDetails::tr("both words, repeated while held");
    case norva::NoRepeat: return TCommandDetails::tr("one word, sent once");
  }
  return {};
}

QString CarrierText(double hertz) {
  return hertz > 0 ? TCommandDetails::tr("%1 kHz").arg(hertz / 1000, 0, 'f', 1)
                   : TCommandDetails::tr("none (unmodulated)");
}

QString HexCodeText(const norva::TIRStreamData& stream) {
  try {
    return norva::HexCodeOf(stream);
  } catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
  }
}

QString ClassesText(const norva::TCommandObject& command) {
  QStringList names;
  for (const norva::TButtonClass& buttonClass : command.GetButtonClasses())
    names.append(buttonClass.GetName());
  return names.isEmpty() ? TCommandDetails::tr("(none)") : names.join(QStringLiteral(", "));
}

// Every class the vocabulary names, in group order, with its generic ordinal.
void FillVocabulary(QComboBox& choice) {
  for (int group = 0; group <= norva::USBNavigationClassGroup; ++group) {
    if (!norva::IsButtonClassGroup(group)) continue;
    const auto groupId = static_cast<norva::TButtonClassGroup>(group);
    for (int id = 1; id < norva::ButtonClassValueCount(groupId); ++id) {
      const norva::TButtonClass buttonClass(groupId, static_cast<std::uint8_t>(id));
      choice.addItem(buttonClass.GetName(), buttonClass.GetOrdValue());
    }
  }
}

}  // namespace

TCommandDetails::TCommandDetails(QWidget* parent)
    : QWidget(parent),
      mHexCode(new QLineEdit),
      mClassChoice(new QComboBox),
      mSetClass(new QPushButton(tr("Set class"))),
      mPicture(new TStreamPicture) {
  setObjectName(QStringLiteral("commandDetails"));
  auto* form = new QFormLayout(this);
  form->setContentsMargins(4, 4, 4, 4);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  mName = AddField("name", tr("Command:"));
  mStatus = AddField("status", tr("Status:"));
  mCarrier = AddField("carrier", tr("Carrier:"));
  mFormat = AddField("format", tr("Format:"));
  mRepeats = AddField("repeats", tr("Repeats:"));
  mDecode = AddField("decode", tr("Decode:"));
  mHexCode->setObjectName(QStringLiteral("hexCode"));
  mHexCode->setReadOnly(true);
  form->addRow(tr("Hex code:"), mHexCode);
  mClasses = AddField("classes", tr("Button classes:"));
  mClassChoice->setObjectName(QStringLiteral("classChoice"));
  mClassChoice->setEditable(true);
  mClassChoice->setInsertPolicy(QComboBox::NoInsert);
  mClassChoice->completer()->setFilterMode(Qt::MatchContains);
  mClassChoice->completer()->setCompletionMode(QCompleter::PopupCompletion);
  FillVocabulary(*mClassChoice);
  auto* choose = new QHBoxLayout;
  choose->addWidget(mClassChoice, 1);
  choose->addWidget(mSetClass);
  form->addRow(tr("Class:"), choose);
  form->addRow(mPicture);
  connect(mSetClass, &QPushButton::clicked, this, [this] {
    const int index = mClassChoice->findText(mClassChoice->currentText());
    if (index < 0) return;
    emit ButtonClassChosen(
        norva::TButtonClass::FromOrdValue(mClassChoice->itemData(index).toUInt()));
  });
  Show(nullptr);
}

QLabel* TCommandDetails::AddField(const char* objectName, const QString& label) {
  auto* field = new QLabel;
  field->setObjectName(QString::fromLatin1(objectName));
  field->setTextInteractionFlags(Qt::TextSelectableByMouse);
  field->setWordWrap(true);
  static_cast<QFormLayout*>(layout())->addRow(label, field);
  return field;
}

QString TCommandDetails::Text(const char* field) const {
  const QObject* widget = findChild<QObject*>(QString::fromLatin1(field));
  if (const auto* label = qobject_cast<const QLabel*>(widget)) return label->text();
  if (const auto* edit = qobject_cast<const QLineEdit*>(widget)) return edit->text();
  return {};
}

void TCommandDetails::Show(const norva::TCommandObject* command) {
  const auto* stream = qobject_cast<const norva::TIRStream*>(command);
  mName->setText(command ? command->GetName() : tr("(no command chosen)"));
  mStatus->setText(command ? command->Status() : QString());
  mClasses->setText(command ? ClassesText(*command) : QString());
  mSetClass->setEnabled(command && !command->IsReadOnly());
  mCarrier->setText(stream ? CarrierText(stream->GetModulationFrequency()) : QString());
  mFormat->setText(stream ? norva::EnumName(stream->GetFormat()) + QStringLiteral(": ") +
                                RepeatsText(stream->GetFormat())
                          : QString());
  mRepeats->setText(stream ? QString::number(stream->GetRepeats()) : QString());
  mDecode->setText(command ? DecodeTextOf(*command) : QString());
  mHexCode->setText(stream ? HexCodeText(stream->Data()) : QString());
  if (stream)
    mPicture->SetStream(stream->Data());
  else
    mPicture->Clear();
}

}  // namespace studio
