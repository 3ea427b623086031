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

void TLibrarySearch::Clear() {
  mEntries.clear();
  mText.clear();
}

void TLibrarySearch::Add(norva::TCommandObject& command, const QString& where) {
  mEntries.push_back({&command, where});
  mText.clear();
}

void TLibrarySearch::GatherText() const {
  mText.reserve(mEntries.size());
  for (const TLibraryEntry& entry : mEntries) {
    QString text = entry.Command->GetName() + u'\n' + entry.Where;
    for (const norva::TButtonClass& buttonClass : entry.Command->GetButtonClasses())
      text += u'\n' + buttonClass.GetName();
    text += u'\n' + DecodeTextOf(*entry.Command);
    mText.push_back(text.toLower());
  }
}

QList<TLibraryEntry> TLibrarySearch::Find(QStringView query) const {
  const QList<QStringView> words = query.split(u' ', Qt::SkipEmptyParts);
  if (words.isEmpty()) return {};
  if (mText.size() != mEntries.size()) GatherText();
  QStringList lowerWords;
  for (const QStringView word : words) lowerWords.append(word.toString().toLower());
  QList<TLibraryEntry> found;
  for (std::size_t i = 0; i < mEntries.size(); ++i) {
    const QString& text = mText[i];
    const bool all = std::all_of(lowerWords.cbegin(), lowerWords.cend(),
                                 [&text](const QString& word) { return text.contains(word); });
    if (all) found.append(mEntries[i]);
  }
  return found;
}

}  // namespace studio
