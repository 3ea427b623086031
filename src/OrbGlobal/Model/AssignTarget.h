#pragma once
// The destination of an AssignTo when it is of the class being copied: held inside one update for
// as long as the copy runs, so that the whole copy notifies once. Empty for another class, and for
// the source itself.
//
//   void TThing::AssignTo(QObject* dest) const {
//     const TAssignTarget<TThing> thing(this, dest);
//     TBase::AssignTo(dest);
//     if (thing) thing->SetValue(mValue);
//   }

#include <QObject>

namespace norva {

template <typename T>
class TAssignTarget {
 public:
  TAssignTarget(const QObject* source, QObject* dest) : mDest(qobject_cast<T*>(dest)) {
    if (mDest == source) mDest = nullptr;
    if (mDest) mDest->BeginUpdate();
  }
  ~TAssignTarget() {
    if (mDest) mDest->EndUpdate();
  }
  TAssignTarget(const TAssignTarget&) = delete;
  TAssignTarget& operator=(const TAssignTarget&) = delete;

  explicit operator bool() const { return mDest != nullptr; }
  T* operator->() const { return mDest; }
  T& operator*() const { return *mDest; }

 private:
  T* mDest;
};

}  // namespace norva
