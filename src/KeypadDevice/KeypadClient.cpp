#include <KeypadDevice/KeypadClient.h>

#include <atomic>

namespace norva {

namespace {
std::atomic<IKeypadClient*> gClient{nullptr};
}  // namespace

IKeypadClient* KeypadClient() { return gClient.load(); }

IKeypadClient* SetKeypadClient(IKeypadClient* client) { return gClient.exchange(client); }

}  // namespace norva
