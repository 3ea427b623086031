#pragma once
// The listeners of one model object: views, windows and indexes that hear its completed changes
// beside the owner, which keeps the object's update slot. An object makes its list on the first
// listener, so an object nobody listens to pays nothing for it.

#include <OrbGlobal/Model/OrbTypes.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace norva {

// Names one listener of one object; 0 names none.
using TUpdateListenerId = std::uint64_t;

class TUpdateListeners {
 public:
  TUpdateListeners() = default;
  // A notification under way calls none of the listeners once their list is gone.
  ~TUpdateListeners();
  TUpdateListeners(const TUpdateListeners&) = delete;
  TUpdateListeners& operator=(const TUpdateListeners&) = delete;

  TUpdateListenerId Add(TUpdateEvent listener);
  // Nothing for an id that names no listener (any more).
  void Remove(TUpdateListenerId id);
  bool IsEmpty() const { return mListeners.empty(); }

  // Calls the listeners in the order they were added. One removed meanwhile is not called; one
  // added meanwhile hears the next change. Touches nothing of the list once the first listener
  // is called, so a listener may destroy the object (and with it this list).
  void Notify(TOrbObject* sender) const;

 private:
  struct TListener {
    TUpdateListenerId Id;
    TUpdateEvent Call;
    bool Removed = false;
  };

  // Shared with a notification under way, which must outlive a listener's removal.
  std::vector<std::shared_ptr<TListener>> mListeners;
  TUpdateListenerId mLastId = 0;
};

}  // namespace norva
