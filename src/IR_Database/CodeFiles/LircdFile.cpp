#include <IR_Database/CodeFiles/LircdFile.h>

#include <IR/IRRawSignal.h>
#include <IR_Database/CodeFiles/EntryReading.h>
#include <IR_Database/CodeFiles/LircdRemote.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace norva {

namespace {

constexpr int MaxWholeCodeBits = 64;
constexpr qsizetype RecognisedPrefix = 65536;

// The words of a line without its comment.
QStringList Words(QStringView line) {
  const qsizetype comment = line.indexOf(u'#');
  if (comment >= 0) line = line.left(comment);
  return line.toString().simplified().split(u' ', Qt::SkipEmptyParts);
}

std::uint64_t Code(const QString& text) {
  bool ok = false;
  const std::uint64_t value = text.toULongLong(&ok, 0);
  if (!ok) throw ENorvaError(QStringLiteral("no code: '%1'").arg(text.left(40)));
  return value;
}

const QString& Single(const QStringList& values) {
  if (values.size() != 1) throw ENorvaError(QStringLiteral("expected one value"));
  return values[0];
}

double Duration(const QString& text) {
  const double value = DecimalNumber(text, u"a duration");
  if (value < 0) throw ENorvaError(QStringLiteral("a negative duration"));
  return value;
}

int BitCount(const QStringList& values) {
  const std::int64_t bits = WholeNumber(Single(values), u"a bit count");
  if (bits < 0 || bits > MaxWholeCodeBits)
    throw ENorvaError(QStringLiteral("%1 bits; at most 64 are read").arg(bits));
  return static_cast<int>(bits);
}

TLircdPulseSpace PulseSpace(const QStringList& values) {
  if (values.size() != 2) throw ENorvaError(QStringLiteral("expected a pulse and a space"));
  return {Duration(values[0]), Duration(values[1])};
}

void SetFlags(TLircdRemote& remote, const QStringList& values) {
  for (const QString& flag : values.join(QString()).split(u'|', Qt::SkipEmptyParts)) {
    if (flag == u"SPACE_ENC") {
      remote.Coding = TLircdCoding::Space;
    } else if (flag == u"RC5" || flag == u"SHIFT_ENC") {
      remote.Coding = TLircdCoding::RC5;
    } else if (flag == u"RC6") {
      remote.Coding = TLircdCoding::RC6;
    } else if (flag == u"CONST_LENGTH") {
      remote.ConstLength = true;
    } else if (flag == u"REVERSE") {
      remote.Reverse = true;
    } else if (flag != u"RAW_CODES") {
      throw ENorvaError(QStringLiteral("flag %1 is not read").arg(flag.left(40)));
    }
  }
}

void Ignore(TLircdRemote&, const QStringList&) {}

struct TSetting {
  QStringView Name;
  void (*Set)(TLircdRemote&, const QStringList&);
};

// clang-format off
const TSetting Settings[] = {
    {u"name", [](TLircdRemote& r, const QStringList& v) { r.Name = v.join(u' '); }},
    {u"flags", SetFlags},
    {u"bits", [](TLircdRemote& r, const QStringList& v) { r.Bits = BitCount(v); }},
    {u"header", [](TLircdRemote& r, const QStringList& v) { r.Header = PulseSpace(v); }},
    {u"one", [](TLircdRemote& r, const QStringList& v) { r.One = PulseSpace(v); }},
    {u"zero", [](TLircdRemote& r, const QStringList& v) { r.Zero = PulseSpace(v); }},
    {u"pre", [](TLircdRemote& r, const QStringList& v) { r.Pre = PulseSpace(v); }},
    {u"post", [](TLircdRemote& r, const QStringList& v) { r.Post = PulseSpace(v); }},
    {u"repeat", [](TLircdRemote& r, const QStringList& v) { r.Repeat = PulseSpace(v); }},
    {u"foot", [](TLircdRemote&, const QStringList& v) {
       if (PulseSpace(v).IsSet()) throw ENorvaError(QStringLiteral("a foot is not read"));
     }},
    {u"plead", [](TLircdRemote& r, const QStringList& v) { r.PLead = Duration(Single(v)); }},
    {u"ptrail", [](TLircdRemote& r, const QStringList& v) { r.PTrail = Duration(Single(v)); }},
    {u"pre_data", [](TLircdRemote& r, const QStringList& v) { r.PreData = Code(Single(v)); }},
    {u"pre_data_bits", [](TLircdRemote& r, const QStringList& v) { r.PreDataBits = BitCount(v); }},
    {u"post_data", [](TLircdRemote& r, const QStringList& v) { r.PostData = Code(Single(v)); }},
    {u"post_data_bits", [](TLircdRemote& r, const QStringList& v) { r.PostDataBits = BitCount(v); }},
    // A second gap, for remotes that alternate two, is not sent.
    {u"gap", [](TLircdRemote& r, const QStringList& v) { r.Gap = Duration(v.value(0)); }},
    {u"repeat_gap", [](TLircdRemote& r, const QStringList& v) { r.RepeatGap = Duration(Single(v)); }},
    {u"rc6_mask", [](TLircdRemote& r, const QStringList& v) { r.Rc6Mask = Code(Single(v)); }},
    {u"frequency", [](TLircdRemote& r, const QStringList& v) { r.FrequencyHz = Duration(Single(v)); }},
    // What a receiver needs and a sender does not: the first press sends the code as written.
    {u"eps", Ignore}, {u"aeps", Ignore}, {u"ignore_mask", Ignore}, {u"duty_cycle", Ignore},
    {u"toggle_bit", Ignore}, {u"toggle_bit_mask", Ignore}, {u"repeat_bit", Ignore},
    {u"toggle_mask", Ignore}, {u"min_repeat", Ignore}, {u"suppress_repeat", Ignore},
    {u"min_code_repeat", Ignore}, {u"manual_sort", Ignore}, {u"driver", Ignore},
    {u"serial_mode", Ignore},
};
// clang-format on

const TSetting* FindSetting(QStringView name) {
  for (const TSetting& setting : Settings)
    if (setting.Name == name) return &setting;
  return nullptr;
}

// Why codes cannot be rendered from the remote's timings; empty when they can.
QString TimingFailure(const TLircdRemote& remote) {
  if (!remote.One.IsSet() && !remote.Zero.IsSet())
    return QStringLiteral("no one and zero timings: codes of a receiver that decodes them itself");
  if (remote.PreDataBits + remote.Bits + remote.PostDataBits > MaxWholeCodeBits)
    return QStringLiteral("more than 64 bits with pre and post data");
  return QString();
}

// The trailer bit of RC6, fifth of the whole code, is twice as long unless the remote says
// otherwise.
void CompleteRc6Mask(TLircdRemote& remote) {
  const int whole = remote.PreDataBits + remote.Bits + remote.PostDataBits;
  if (remote.Coding == TLircdCoding::RC6 && remote.Rc6Mask == 0 && whole >= 5)
    remote.Rc6Mask = std::uint64_t{1} << (whole - 5);
}

class TLircdReader {
 public:
  TCodeFileEntries Read(const QByteArray& bytes) {
    for (const QByteArray& line : bytes.split('\n')) {
      ++mLine;
      Line(Words(QString::fromUtf8(line)));
    }
    FlushRawCode();
    if (mInRemote)
      mRead.Refusals.append({QStringLiteral("line %1").arg(mRemoteLine),
                             QStringLiteral("the file ends inside remote %1").arg(mRemote.Name)});
    return mRead;
  }

 private:
  enum class TSection { Timings, Codes, RawCodes };

  void Line(const QStringList& words) {
    if (words.isEmpty()) return;
    const bool begins = words[0] == u"begin" && words.size() == 2;
    const bool ends = words[0] == u"end" && words.size() == 2;
    if (!mInRemote) {
      if (begins && words[1] == u"remote") {
        mInRemote = true;
        mRemoteLine = mLine;
        mRemote = {};
        mFailure.clear();
        mSection = TSection::Timings;
      } else {
        Refuse(QStringLiteral("outside every remote"));
      }
    } else if (ends && words[1] == u"remote") {
      FlushRawCode();
      mInRemote = false;
    } else if (begins && (words[1] == u"codes" || words[1] == u"raw_codes")) {
      mSection = words[1] == u"codes" ? TSection::Codes : TSection::RawCodes;
      CompleteRc6Mask(mRemote);
    } else if (ends && (words[1] == u"codes" || words[1] == u"raw_codes")) {
      FlushRawCode();
      mSection = TSection::Timings;
    } else if (mSection == TSection::Codes) {
      CodeLine(words);
    } else if (mSection == TSection::RawCodes) {
      RawCodeLine(words);
    } else {
      SettingLine(words);
    }
  }

  void SettingLine(const QStringList& words) {
    const TSetting* setting = FindSetting(words[0]);
    try {
      if (!setting)
        throw ENorvaError(QStringLiteral("setting %1 is not read").arg(words[0].left(40)));
      setting->Set(mRemote, words.mid(1));
    } catch (const ENorvaError& error) {
      // The first failure is the one every code of the remote is refused with.
      if (mFailure.isEmpty()) mFailure = words[0].left(40) + QStringLiteral(": ") + error.Message();
    }
  }

  void CodeLine(const QStringList& words) {
    const QString failure = mFailure.isEmpty() ? TimingFailure(mRemote) : mFailure;
    ReadEntry(mRead, Place(), [&] {
      if (!failure.isEmpty()) throw ENorvaError(failure);
      if (words.size() < 2) throw ENorvaError(QStringLiteral("no code"));
      if (words.size() > 2)
        throw ENorvaError(QStringLiteral("several codes for one button are not read"));
      const std::uint64_t code = Code(words[1]);
      if (mRemote.Bits < MaxWholeCodeBits && code >> mRemote.Bits != 0)
        throw ENorvaError(QStringLiteral("code %1 has more than %2 bits")
                              .arg(words[1].left(40))
                              .arg(mRemote.Bits));
      const TLircdWords sent = RenderLircdCode(mRemote, code);
      return TCodeFileEntry{words[0], QString(), mRemote.Name,
                            WordsStream(mRemote.FrequencyHz, sent.Once, sent.Repeat), QString()};
    });
  }

  void RawCodeLine(const QStringList& words) {
    if (words[0] == u"name") {
      FlushRawCode();
      mRawCode = TRawCode{words.mid(1).join(u' '), Place(), {}, QString()};
      return;
    }
    if (!mRawCode) {
      Refuse(QStringLiteral("durations before the name of a raw code"));
      return;
    }
    for (const QString& word : words) {
      try {
        mRawCode->Durations.append(Duration(word));
      } catch (const ENorvaError& error) {
        if (mRawCode->Failure.isEmpty()) mRawCode->Failure = error.Message();
      }
    }
  }

  void FlushRawCode() {
    if (!mRawCode) return;
    const TRawCode raw = *std::exchange(mRawCode, std::nullopt);
    ReadEntry(mRead, raw.Place, [&] {
      if (!mFailure.isEmpty()) throw ENorvaError(mFailure);
      if (!raw.Failure.isEmpty()) throw ENorvaError(raw.Failure);
      QList<double> durations = raw.Durations;
      if (durations.size() % 2 == 1 && mRemote.Gap > 0) durations.append(mRemote.Gap);
      return TCodeFileEntry{raw.Name, QString(), mRemote.Name,
                            RawSignalStream(mRemote.FrequencyHz, durations), QString()};
    });
  }

  QString Place() const { return QStringLiteral("line %1").arg(mLine); }
  void Refuse(const QString& reason) { mRead.Refusals.append({Place(), reason}); }

  struct TRawCode {
    QString Name;
    QString Place;
    QList<double> Durations;
    QString Failure;
  };

  TCodeFileEntries mRead;
  int mLine = 0;
  bool mInRemote = false;
  int mRemoteLine = 0;  // where the remote being read begins
  TSection mSection = TSection::Timings;
  TLircdRemote mRemote;
  QString mFailure;  // why the remote's codes cannot be read; empty while they can
  std::optional<TRawCode> mRawCode;
};

}  // namespace

bool IsLircdFile(const QByteArray& bytes) {
  for (const QByteArray& line : bytes.left(RecognisedPrefix).split('\n')) {
    const QStringList words = Words(QString::fromUtf8(line));
    if (!words.isEmpty())
      return words == QStringList{QStringLiteral("begin"), QStringLiteral("remote")};
  }
  return false;
}

TCodeFileEntries ReadLircdFile(const QByteArray& bytes, const QString& /*path*/) {
  return TLircdReader().Read(bytes);
}

}  // namespace norva
