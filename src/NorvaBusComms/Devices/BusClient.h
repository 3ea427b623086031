#pragma once
// A bus client: what shares a bus object, receives its packets, raw data and notifications, and
// handles the workers' messages. The behaviour lives in TNorvaBusClientCore once; TNorvaBusClient
// hosts it in a plain QObject for headless programs, the widgets library in a QWidget form.

#include <NorvaBusComms/BusUser.h>
#include <NorvaGlobal/Vocabulary.h>

#include <QObject>

namespace norva {

class TNorvaBusComms;

class TNorvaBusClientCore : public TNorvaBusUser {
 public:
  static constexpr TTickCount DeviceGoneWaitMs = 1500;
  static constexpr TTickCount DeviceGoneStepMs = 50;

  explicit TNorvaBusClientCore(QObject& host) : mHost(host) {}
  // Hosts call Disconnect() in their own destructor, while their overrides still exist.
  ~TNorvaBusClientCore() override = default;
  TNorvaBusClientCore(const TNorvaBusClientCore&) = delete;
  TNorvaBusClientCore& operator=(const TNorvaBusClientCore&) = delete;

  QObject& Host() const { return mHost; }
  TNorvaBusComms* BusComms() const { return mBusComms; }

  // Registers with `bus` (which becomes shared with its other clients).
  void Attach(TNorvaBusComms* bus);
  // Lets go of the bus object, freeing it when no client is left, then calls Disconnected().
  void Disconnect();

  bool GetConnected() const;
  // Passes the wish on to the bus object, then calls ConnectionChange() in any case.
  void SetConnected(bool value);

  virtual TOptionalZone GetZone() const { return NoZone; }
  virtual void SetZone(TOptionalZone /*zone*/) {}
  virtual TSource GetSource() const { return SourceUnknown; }
  virtual void SetSource(TSource /*source*/) {}

  // The host's event() passes every event here first; true when it was a worker message.
  bool HandleMessage(QEvent* event);

 private:
  void WMRXEvent(int kind);
  void WMThreadCrash(int errorCode);

  QObject& mHost;
  TNorvaBusComms* mBusComms = nullptr;
  bool mHandlingCrash = false;  // every worker of a dead link reports; one report is enough
};

class TNorvaBusClient : public QObject, public TNorvaBusClientCore {
  Q_OBJECT
  Q_PROPERTY(int Zone READ Zone WRITE SetZoneValue)
  Q_PROPERTY(norva::TSource Source READ GetSource WRITE SetSource)
  Q_PROPERTY(bool Connected READ GetConnected WRITE SetConnected)

 public:
  explicit TNorvaBusClient(TNorvaBusComms* bus = nullptr, QObject* parent = nullptr);
  ~TNorvaBusClient() override;

 protected:
  bool event(QEvent* event) override;

 private:
  int Zone() const { return GetZone(); }
  void SetZoneValue(int zone) { SetZone(static_cast<TOptionalZone>(zone)); }
};

}  // namespace norva
