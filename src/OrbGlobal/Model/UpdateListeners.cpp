#include <OrbGlobal/Model/UpdateListeners.h>

#include <algorithm>

namespace norva {

TUpdateListeners::~TUpdateListeners() {
  for (const std::shared_ptr<TListener>& listener : mListeners) listener->Removed = true;
}

TUpdateListenerId TUpdateListeners::Add(TUpdateEvent listener) {
  mListeners.push_back(std::make_shared<TListener>(TListener{++mLastId, std::move(listener)}));
  return mLastId;
}

void TUpdateListeners::Remove(TUpdateListenerId id) {
  const auto found =
      std::ranges::find_if(mListeners, [id](const auto& listener) { return listener->Id == id; });
  if (found == mListeners.end()) return;
  (*found)->Removed = true;
  mListeners.erase(found);
}

void TUpdateListeners::Notify(TOrbObject* sender) const {
  const std::vector<std::shared_ptr<TListener>> listeners = mListeners;
  for (const std::shared_ptr<TListener>& listener : listeners)
    if (!listener->Removed) listener->Call(sender);
}

}  // namespace norva
