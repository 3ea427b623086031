// The studio's bus panel while the simulated amplifier sends a burst of 100,000 packets over a
// pseudo-terminal: the window must keep serving its event loop. A 5 ms timer stands for the
// window's frames; the longest gap between two of its ticks is how long the UI thread was busy in
// one piece, and must stay under 50 ms. The simulator runs on a thread of its own, as norva-sim
// runs in a process of its own, or on the UI thread beside the panel, as the studio's
// built-in simulator does (sim_on_ui_thread), which then also pays for writing the burst; and with
// the panel's filter set, so that every arriving row is also matched against it (filtered).
#include <BusView.h>
#include <StudioLink.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QThread>
#include <QTimer>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr int BurstPackets = 100000;
constexpr int FrameTickMs = 5;
constexpr int GiveUpMs = 60000;

// The simulated amplifier, on a thread of its own or on this one.
class TAmplifier {
 public:
  explicit TAmplifier(bool ownThread) {
    if (ownThread) {
      mThread.start();
      mSimulator->moveToThread(&mThread);
    }
    Run([this] { mPort = mSimulator->ServePty(); }, Qt::BlockingQueuedConnection);
  }
  ~TAmplifier() {
    Run([this] { mSimulator.reset(); }, Qt::BlockingQueuedConnection);
    mThread.quit();
    mThread.wait();
  }
  TAmplifier(const TAmplifier&) = delete;
  TAmplifier& operator=(const TAmplifier&) = delete;

  QString Port() const { return mPort; }
  void Burst() {
    Run([this] { mSimulator->SendBurst(BurstPackets); }, Qt::QueuedConnection);
  }

 private:
  template <typename F>
  void Run(F work, Qt::ConnectionType across) {
    if (mThread.isRunning())
      QMetaObject::invokeMethod(mSimulator.get(), work, across);
    else
      work();
  }

  QThread mThread;
  std::unique_ptr<norva::sim::TDeviceSimulator> mSimulator =
      std::make_unique<norva::sim::TDeviceSimulator>();
  QString mPort;
};

void BusPanelDuringBurst(benchmark::State& state) {
  double longestFrameMs = 0;
  double packetsPerSecond = 0;
  for (auto _ : state) {
    state.PauseTiming();
    TAmplifier amplifier(state.range(0) == 0);  // sim_on_ui_thread 0: a thread of its own
    studio::TBusView view;
    view.resize(800, 400);
    view.show();
    if (state.range(1) != 0) view.Filter()->setText(QStringLiteral("0C"));
    studio::TStudioLink link(view);
    if (!link.ConnectSerial(amplifier.Port())) {
      state.SkipWithError("the simulator's line did not open");
      return;
    }
    QApplication::processEvents();
    QElapsedTimer sinceTick;
    qint64 longest = 0;
    QEventLoop loop;
    QTimer frame;
    frame.setInterval(FrameTickMs);
    QObject::connect(&frame, &QTimer::timeout, [&] {
      longest = std::max(longest, sinceTick.restart());
      if (view.Log().rowCount() >= BurstPackets) loop.quit();  // every packet shown
    });
    QTimer::singleShot(GiveUpMs, &loop, &QEventLoop::quit);
    state.ResumeTiming();

    QElapsedTimer burst;
    burst.start();
    sinceTick.start();
    frame.start();
    amplifier.Burst();
    loop.exec();
    const qint64 elapsed = burst.elapsed();

    state.PauseTiming();
    if (view.Log().rowCount() < BurstPackets) {
      state.SkipWithError("the burst did not arrive whole");
      return;
    }
    longestFrameMs = std::max(longestFrameMs, static_cast<double>(longest));
    packetsPerSecond = BurstPackets * 1000.0 / static_cast<double>(std::max<qint64>(elapsed, 1));
    link.Close();
    state.ResumeTiming();
  }
  state.counters["longest_frame_ms"] = longestFrameMs;
  state.counters["packets_per_s"] = packetsPerSecond;
}
BENCHMARK(BusPanelDuringBurst)
    ->Args({0, 0})
    ->Args({1, 0})
    ->Args({1, 1})
    ->ArgNames({"sim_on_ui_thread", "filtered"})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

}  // namespace
