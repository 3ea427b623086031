#include <IR/IRStream.h>

#include <IR/IRHexCode.h>
#include <IR/IRPeriods.h>
#include <IR/IRRawSignal.h>
#include <IR/IRStreamReplacement.h>
#include <NorvaGlobal/Exceptions.h>
#include <NorvaGlobal/UIServices.h>
#include <OrbGlobal/Model/AssignTarget.h>
#include <OrbGlobal/Model/OrbClass.h>
#include <OrbGlobal/Undo/Undo.h>
#include <OrbGlobal/Xml/XmlBuilding.h>
#include <OrbGlobal/Xml/XmlLookup.h>

namespace norva {

namespace {

constexpr int PairIDMask = PeriodIDCount - 1;

// A stored format number; one that names no format reads as the default.
TIRStreamFormat FormatOf(quint8 number) {
  return number <= NoRepeat ? static_cast<TIRStreamFormat>(number) : RepeatWord1;
}

double LengthUnit(TPeriodID id) {
  return id >= FirstWordEndID ? WordEndLengthUnit : PeriodLengthUnit;
}

// The stream as its text forms carry it: the lengths its pairs use up to the end, those pairs.
TIRStreamData Carried(const TIRStreamData& data) {
  TIRStreamData carried;
  carried.ModulationPeriod = data.ModulationPeriod;
  carried.Format = data.Format;
  carried.SetPeriodLengthsString(data.GetPeriodLengthsString());
  carried.SetPeriodIDPairsString(data.GetPeriodIDPairsString());
  return carried;
}

}  // namespace

TIRStream::TIRStream(TOrbObject* owner) : TCommandObject(owner) {}

void TIRStream::SetModulationPeriod(quint16 period) {
  ChangeProperty("ModulationPeriod", mData.ModulationPeriod, period);
}

void TIRStream::SetFormat(TIRStreamFormat format) {
  ChangeProperty("Format", mData.Format, format);
}

double TIRStream::GetModulationFrequency() const {
  if (mData.ModulationPeriod == 0) return 0;
  return 1 / (mData.ModulationPeriod * (1 / ModulationClockHz));
}

void TIRStream::SetModulationFrequency(double hertz) {
  if (hertz == 0) {
    SetModulationPeriod(0);
    return;
  }
  const double period = RoundToEven(1 / (hertz * (1 / ModulationClockHz)));
  if (!(period >= 0 && period < NoModulationPeriod))
    throw ENorvaError(QStringLiteral("Carrier frequency %1 Hz is out of range.").arg(hertz));
  SetModulationPeriod(static_cast<quint16>(period));
}

quint16 TIRStream::GetPeriodLength(TPeriodID id) const {
  return mData.Lengths[static_cast<std::size_t>(id & PairIDMask)];
}

void TIRStream::SetPeriodLength(TPeriodID id, quint16 length) {
  mData.Lengths[static_cast<std::size_t>(id & PairIDMask)] = length;
  Updated();
}

double TIRStream::GetPeriodLengthDI(TPeriodID id) const {
  return GetPeriodLength(id) * LengthUnit(id);
}

void TIRStream::SetPeriodLengthDI(TPeriodID id, double seconds) {
  const double length = RoundToEven(seconds / LengthUnit(id));
  if (!(length >= 0 && length <= NoModulationPeriod))
    throw ENorvaError(QStringLiteral("Period length of %1 s does not fit 16 bits.").arg(seconds));
  SetPeriodLength(id, static_cast<quint16>(length));
}

TPeriodIDPair TIRStream::GetPeriodIDPair(int index) const {
  if (index < 0 || index >= MaxPeriodIDPairs) return {};
  return mData.Pairs[static_cast<std::size_t>(index)];
}

void TIRStream::SetPeriodIDPair(int index, TPeriodIDPair pair) {
  if (index < 0 || index >= MaxPeriodIDPairs) return;
  pair = {static_cast<TPeriodID>(pair.OnID & PairIDMask),
          static_cast<TPeriodID>(pair.OffID & PairIDMask)};
  TPeriodIDPair& stored = mData.Pairs[static_cast<std::size_t>(index)];
  if (stored.Equal(pair)) return;
  stored = pair;
  Updated();
}

void TIRStream::ClearIDPairs() {
  for (TPeriodIDPair& pair : mData.Pairs) pair.Clear();
  Updated();
}

// The text forms show the lengths and pairs only up to the end the format gives, so they are
// changed, and undone, as the whole stream: an entry of the text would lose what lies beyond.
void TIRStream::SetPeriodLengthsString(const QString& text) {
  if (text == GetPeriodLengthsString()) return;
  TIRStreamData read = mData;
  read.SetPeriodLengthsString(text);  // raises before anything is recorded
  SetData(read);
}

void TIRStream::SetPeriodIDPairsString(const QString& text) {
  if (text == GetPeriodIDPairsString()) return;
  TIRStreamData read = mData;
  read.SetPeriodIDPairsString(text);
  SetData(read);
}

QString TIRStream::GetHexCode() const { return HexCodeOf(mData); }

void TIRStream::SetHexCode(const QString& text) {
  if (const std::optional<TIRStreamData> read = ParseHexCode(text)) SetData(*read);
}

void TIRStream::SetRawSignal(double frequencyHz, const QList<double>& microseconds) {
  SetData(RawSignalStream(frequencyHz, microseconds));
}

void TIRStream::SetData(const TIRStreamData& data) {
  ReplaceStream([&] { StoreData(data); });
}

// One entry for the whole value: entries of the text forms would read the lengths and pairs
// through a format and an end that the replacement itself changes.
void TIRStream::ReplaceStream(const std::function<void()>& replace) {
  std::unique_ptr<TIRStream> previous = UndoEnabled() && !IsReadOnly() ? CopyOfStream() : nullptr;
  const TIRStreamData before = mData;
  replace();
  if (previous ? SameStream(*previous) : mData == before) return;
  if (previous) RecordChange(std::make_unique<TReplacedIRStream>(*this, std::move(previous)));
  MarkModified();
  Updated();
}

bool TIRStream::SameStream(const TIRStream& other) const {
  return mData == other.mData && SameDerived(other);
}

std::unique_ptr<TIRStream> TIRStream::CopyOfStream() const {
  std::unique_ptr<TIRStream> copy(
      static_cast<TIRStream*>(ConstructOrbObject(metaObject(), nullptr)));
  copy->mData = mData;
  copy->CopyDerived(*this);
  return copy;
}

void TIRStream::RestoreStream(const TIRStream& previous) {
  ReplaceStream([&] {
    StoreData(previous.mData);
    CopyDerived(previous);
  });
}

QString TIRStream::GetName() const {
  if (HasName()) return TCommandObject::GetName();
  return GetLearnt() ? QStringLiteral("Learnt IR-Command") : QStringLiteral("Unknown IR-Command");
}

bool TIRStream::Match(const TCommandObject* other) const {
  const auto* stream = qobject_cast<const TIRStream*>(other);
  return stream && mData.ModulationPeriod == stream->mData.ModulationPeriod &&
         mData.Format == stream->mData.Format &&
         GetPeriodLengthsString() == stream->GetPeriodLengthsString() &&
         GetPeriodIDPairsString() == stream->GetPeriodIDPairsString();
}

void TIRStream::AssignTo(QObject* dest) const {
  const TAssignTarget<TIRStream> stream(this, dest);
  TCommandObject::AssignTo(dest);
  if (!stream) return;
  stream->ReplaceStream([&] {
    stream->StoreData(Carried(mData));
    stream->CopyDerived(*this);
  });
  stream->SetRepeats(mRepeats);
}

void TIRStream::Save(pugi::xml_node element) const {
  if (IsEmpty()) return;
  TCommandObject::Save(element);
  AddNumberElement(element, "modulation_period", mData.ModulationPeriod);
  AddNumberElement(element, "format", mData.Format);
  AddTextElement(element, "period_lengths", GetPeriodLengthsString());
  AddTextElement(element, "period_id_pairs", GetPeriodIDPairsString());
  if (mRepeats != 0) AddNumberElement(element, "repeat", mRepeats);
}

// Read as one whole stream, replaced once every element is read: element by element, the text
// forms would be recorded for undo against a format already read and pairs not yet read.
void TIRStream::Load(pugi::xml_node element) {
  TStreamBeingRead read{mData, 0};
  mRead = &read;
  try {
    TCommandObject::Load(element);
  } catch (...) {
    mRead = nullptr;
    throw;
  }
  mRead = nullptr;
  SetData(read.Data);
  SetRepeats(read.Repeats);
}

// Only inside Load. The text forms are read only when they differ from what the stream read so
// far gives, as their setters do.
void TIRStream::LoadElement(pugi::xml_node child) {
  TCommandObject::LoadElement(child);
  TIRStreamData& data = mRead->Data;
  if (IsNamed(child, "modulation_period")) {
    data.ModulationPeriod = ElementNumber<quint16>(child, NoModulationPeriod);
  } else if (IsNamed(child, "format")) {
    data.Format = FormatOf(ElementNumber<quint8>(child, RepeatWord1));
  } else if (IsNamed(child, "period_lengths")) {
    const QString text = GetElementText(child);
    if (text != data.GetPeriodLengthsString()) data.SetPeriodLengthsString(text);
  } else if (IsNamed(child, "period_id_pairs")) {
    const QString text = GetElementText(child);
    if (text != data.GetPeriodIDPairsString()) data.SetPeriodIDPairsString(text);
  } else if (IsNamed(child, "repeat")) {
    mRead->Repeats = ElementNumber<quint8>(child, 0);
  }
}

void TIRPeriodsLoadHelper::LoadStream(TIRStream& stream) const {
  stream.mData.Lengths = GetPeriodLengths();
  stream.mData.Pairs = mPairs;
}

bool HexCodeInClipboard() { return LooksLikeHexCode(UIServices().ClipboardText()); }

}  // namespace norva
