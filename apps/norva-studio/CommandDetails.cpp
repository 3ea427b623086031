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
    case norva::RepeatWord2: return TCommandDetails::tr("first word once, second repeated");
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
      mName(Field("name")),
      mStatus(Field("status")),
      mCarrier(Field("carrier")),
      mFormat(Field("format")),
      mRepeats(Field("repeats")),
      mClasses(Field("classes")),
      mDecode(ReadOnlyLine("decode")),
      mHexCode(ReadOnlyLine("hexCode")),
      mClassChoice(new QComboBox),
      mSetClass(new QPushButton(tr("Set class"))),
      mPicture(new TStreamPicture) {
  setObjectName(QStringLiteral("commandDetails"));
  mClassChoice->setObjectName(QStringLiteral("classChoice"));
  mClassChoice->setEditable(true);
  mClassChoice->setInsertPolicy(QComboBox::NoInsert);
  // Not as wide as the longest class name: the panel stays narrow.
  mClassChoice->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  mClassChoice->setMinimumContentsLength(12);
  mClassChoice->completer()->setFilterMode(Qt::MatchContains);
  mClassChoice->completer()->setCompletionMode(QCompleter::PopupCompletion);
  FillVocabulary(*mClassChoice);
  // Short values share a line, so the picture keeps its room in a low panel.
  auto* facts = new QHBoxLayout;
  facts->setSpacing(8);
  facts->addWidget(mStatus, 1);
  facts->addWidget(new QLabel(tr("Carrier:")));
  facts->addWidget(mCarrier, 1);
  facts->addWidget(new QLabel(tr("Repeats:")));
  facts->addWidget(mRepeats, 1);
  auto* choose = new QHBoxLayout;
  choose->addWidget(mClassChoice, 1);
  choose->addWidget(mSetClass);
  auto* form = new QFormLayout(this);
  form->setContentsMargins(4, 4, 4, 4);
  form->setVerticalSpacing(3);
  form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  form->addRow(tr("Command:"), mName);
  form->addRow(tr("Status:"), facts);
  form->addRow(tr("Format:"), mFormat);
  form->addRow(tr("Decode:"), mDecode);
  form->addRow(tr("Hex code:"), mHexCode);
  form->addRow(tr("Button classes:"), mClasses);
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

QLabel* TCommandDetails::Field(const char* objectName) {
  auto* field = new QLabel;
  field->setObjectName(QString::fromLatin1(objectName));
  field->setTextInteractionFlags(Qt::TextSelectableByMouse);
  field->setWordWrap(true);
  return field;
}

// Long values (a decode, a hex code) scroll in their line instead of widening the panel.
QLineEdit* TCommandDetails::ReadOnlyLine(const char* objectName) {
  auto* line = new QLineEdit;
  line->setObjectName(QString::fromLatin1(objectName));
  line->setReadOnly(true);
  return line;
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
  const norva::TButtonClasses classes =
      command ? command->GetButtonClasses() : norva::TButtonClasses();
  mClassChoice->setCurrentIndex(
      classes.isEmpty() ? -1 : mClassChoice->findData(classes.first().GetOrdValue()));
  mCarrier->setText(stream ? CarrierText(stream->GetModulationFrequency()) : QString());
  mFormat->setText(stream ? norva::EnumName(stream->GetFormat()) + QStringLiteral(": ") +
                                RepeatsText(stream->GetFormat())
                          : QString());
  mRepeats->setText(stream ? QString::number(stream->GetRepeats()) : QString());
  mDecode->setText(command ? DecodeTextOf(*command) : QString());
  mHexCode->setText(stream ? HexCodeText(stream->Data()) : QString());
  mDecode->setCursorPosition(0);  // the start of a long value, where it says the most
  mHexCode->setCursorPosition(0);
  if (stream)
    mPicture->SetStream(stream->Data());
  else
    mPicture->Clear();
}

}  // namespace studio
