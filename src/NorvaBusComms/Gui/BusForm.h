#pragma once
// The base of every window that talks to devices: a QWidget hosting the shared bus-client
// behaviour (the same as the headless TNorvaBusClient).

#include <NorvaBusComms/Devices/BusClient.h>

#include <QWidget>

namespace norva {

class TNorvaBusForm : public QWidget, public TNorvaBusClientCore {
  Q_OBJECT
  Q_PROPERTY(int Zone READ Zone WRITE SetZoneValue)
  Q_PROPERTY(norva::TSource Source READ GetSource WRITE SetSource)
  Q_PROPERTY(bool Connected READ GetConnected WRITE SetConnected)

 public:
  // A form without a bus object, or registered with `bus`.
  explicit TNorvaBusForm(QWidget* owner = nullptr, TNorvaBusComms* bus = nullptr);
  ~TNorvaBusForm() override;

 protected:
  bool event(QEvent* event) override;

 private:
  int Zone() const { return GetZone(); }
  void SetZoneValue(int zone) { SetZone(static_cast<TOptionalZone>(zone)); }
};

}  // namespace norva
