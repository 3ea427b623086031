#pragma once
// An infra-red command as a model object: its carrier, format, repeat count, period lengths and
// on/off pairs (see IRStreamData.h), with undoable properties, text forms, hex codes and XML.

#include <IR/CommandObject.h>
#include <IR/IRStreamData.h>

#include <QList>

#include <functional>
#include <memory>

namespace norva {

class TIRStream : public TCommandObject {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{5B7E2C19-8A4D-4F3E-B6C1-9D0E2F3A4B5C}")
  Q_CLASSINFO("XmlElement", "ir_stream")
  Q_PROPERTY(quint16 ModulationPeriod READ GetModulationPeriod WRITE SetModulationPeriod)
  Q_PROPERTY(norva::TIRStreamFormat Format READ GetFormat WRITE SetFormat)
  Q_PROPERTY(quint8 Repeats READ GetRepeats WRITE SetRepeats)
  Q_PROPERTY(QString PeriodLengthsString READ GetPeriodLengthsString WRITE SetPeriodLengthsString)
  Q_PROPERTY(QString PeriodIDPairsString READ GetPeriodIDPairsString WRITE SetPeriodIDPairsString)

 public:
  // Empty: no carrier period (65535), RepeatWord1, no lengths, cleared pairs.
  Q_INVOKABLE explicit TIRStream(norva::TOrbObject* owner = nullptr);

  const TIRStreamData& Data() const { return mData; }

  // In ticks of the 12 MHz clock; 0 is an unmodulated stream, 65535 none.
  quint16 GetModulationPeriod() const { return mData.ModulationPeriod; }
  void SetModulationPeriod(quint16 period);
  TIRStreamFormat GetFormat() const { return mData.Format; }
  void SetFormat(TIRStreamFormat format);
  quint8 GetRepeats() const { return mRepeats; }
  void SetRepeats(quint8 repeats) { ChangeProperty("Repeats", mRepeats, repeats); }
  // Hertz; 0 for an unmodulated stream. Setting rounds the period to the nearest tick.
  double GetModulationFrequency() const;
  void SetModulationFrequency(double hertz);

  // Raw units (1/3 us, or 256/3 us for IDs 14 and 15). The setter notifies but records nothing.
  quint16 GetPeriodLength(TPeriodID id) const;
  void SetPeriodLength(TPeriodID id, quint16 length);
  // The same in seconds.
  double GetPeriodLengthDI(TPeriodID id) const;
  void SetPeriodLengthDI(TPeriodID id, double seconds);
  TPeriodIDPair GetPeriodIDPair(int index) const;
  // IDs are kept to 0..15. Notifies but records nothing.
  void SetPeriodIDPair(int index, TPeriodIDPair pair);
  // Clears every pair. Notifies but records nothing.
  void ClearIDPairs();

  bool OneWord() const { return mData.OneWord(); }
  int GetEndPos(bool bothWords) const { return mData.GetEndPos(bothWords); }
  bool IsPeriodUsed(TPeriodID id, int endPos) const { return mData.IsPeriodUsed(id, endPos); }

  QString GetPeriodLengthsString() const { return mData.GetPeriodLengthsString(); }
  void SetPeriodLengthsString(const QString& text);
  QString GetPeriodIDPairsString() const { return mData.GetPeriodIDPairsString(); }
  void SetPeriodIDPairsString(const QString& text);

  // The hex code; see IRHexCode.h for its failures.
  QString GetHexCode() const;
  // Reads a hex code; fewer than five words change nothing. A failure leaves the stream as it was.
  void SetHexCode(const QString& text);
  // Builds the stream from a learnt raw signal (see IRRawSignal.h); a failure changes nothing.
  void SetRawSignal(double frequencyHz, const QList<double>& microseconds);
  // Replaces carrier, format, lengths and pairs as one change of the whole stream.
  void SetData(const TIRStreamData& data);

  // The user's name, else "Learnt IR-Command" or "Unknown IR-Command".
  QString GetName() const override;
  QString Status() const override { return mData.Status(); }
  // Another stream with the same carrier, format, used lengths and pairs (repeats aside).
  bool Match(const TCommandObject* other) const override;
  bool IsEmpty() const override { return mData.IsEmpty(); }
  // To a stream: the command part, then the whole stream as one change (carrier, format, the
  // lengths and pairs as their text forms carry them: only what the pairs use up to the end), and
  // repeats.
  void AssignTo(QObject* dest) const override;

  // Nothing at all for an empty stream.
  void Save(pugi::xml_node element) const override;
  // A missing "repeat" means 0. The stream part is one change of the whole stream; a failure
  // leaves it as it was.
  void Load(pugi::xml_node element) override;

 protected:
  void LoadElement(pugi::xml_node child) override;

  // Every replacement of the whole stream goes through here: `replace` stores the new content
  // (StoreData) and what a subclass keeps beside it. One undo entry keeps the whole stream as it
  // was and puts it back through here, so undo gives exactly the stream before and redo exactly
  // the one after. Notifies once; a replacement that changes nothing records nothing.
  void ReplaceStream(const std::function<void()>& replace);
  // Only inside ReplaceStream.
  void StoreData(const TIRStreamData& data) { mData = data; }
  // What a subclass keeps beside the content, taken from `source` (a stream of any class) when a
  // whole stream is copied or put back, and compared to tell whether a replacement changed it.
  virtual void CopyDerived(const TIRStream& /*source*/) {}
  virtual bool SameDerived(const TIRStream& /*other*/) const { return true; }

 private:
  friend class TIRPeriodsLoadHelper;
  friend class TReplacedIRStream;

  bool SameStream(const TIRStream& other) const;
  // An owner-less stream of this class holding this one's content and what the class derives.
  std::unique_ptr<TIRStream> CopyOfStream() const;
  void RestoreStream(const TIRStream& previous);

  // What Load has read so far, while it runs.
  struct TStreamBeingRead {
    TIRStreamData Data;
    quint8 Repeats;
  };

  TIRStreamData mData;
  quint8 mRepeats = 0;
  TStreamBeingRead* mRead = nullptr;
};

// Whether the clipboard (through the UI services) holds text shaped like a hex code.
bool HexCodeInClipboard();

}  // namespace norva
