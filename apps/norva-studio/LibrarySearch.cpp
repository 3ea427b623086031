#include "LibrarySearch.h"

#include <IR/IR.h>
#include <IR/IRProtocols.h>

#include <algorithm>

namespace studio {

QString DecodeTextOf(const norva::TCommandObject& command) {
  const auto* stream = qobject_cast<const norva::TIRStream*>(&command);
  if (!stream) return {};
  const QList<norva::TIRDecode> decodes = norva::DecodeIRStream(stream->Data());
  return decodes.isEmpty() ? QString() : norva::DecodeText(decodes.first());
}

namespace {

// Whether `word` begins a word of `text`: at its start or after a character that is no letter or
// digit, so that "5" finds "Zone 5" but not "Zone 15".
bool BeginsAWord(const QString& text, const QString& word) {
  for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
    if (at == 0 || !text[at - 1].isLetterOrNumber()) return true;
  }
  return false;
}

}  // namespace

void TLibrarySearch::Clear() {
  mEntries.clear();
  mText.clear();
}

void TLibrarySearch::Add(norva::TCommandObject& command, const QString& where) {
  mEntries.push_back({&command, where});
  mText.clear();
}

bool TLibrarySearch::GatherSome(std::size_t count) const {
  mText.reserve(mEntries.size());
  const std::size_t end = mText.size() + std::min(count, mEntries.size() - mText.size());
  for (std::size_t i = mText.size(); i < end; ++i) {
    const TLibraryEntry& entry = mEntries[i];
    QString text = entry.Command->GetName() + u'\n' + entry.Where;
    for (const norva::TButtonClass& buttonClass : entry.Command->GetButtonClasses())
      text += u'\n' + buttonClass.GetName();
    text += u'\n' + DecodeTextOf(*entry.Command);
    mText.push_back(text.toLower());
  }
  return mText.size() == mEntries.size();
}

QList<TLibraryEntry> TLibrarySearch::Find(QStringView query) const {
  const QList<QStringView> words = query.split(u' ', Qt::SkipEmptyParts);
  if (words.isEmpty()) return {};
  GatherSome(mEntries.size());
  QStringList lowerWords;
  for (const QStringView word : words) lowerWords.append(word.toString().toLower());
  QList<TLibraryEntry> found;
  for (std::size_t i = 0; i < mEntries.size(); ++i) {
    const QString& text = mText[i];
    const bool all = std::all_of(lowerWords.cbegin(), lowerWords.cend(),
                                 [&text](const QString& word) { return BeginsAWord(text, word); });
    if (all) found.append(mEntries[i]);
  }
  return found;
}

}  // namespace studio
