// A client of the installed package that links only NorvaRuntime::Testing: the test doubles and the
// chief headers they build on compile without the widgets.
#include <NorvaBusComms/NorvaBusComms.h>
#include <NorvaGlobal/NorvaGlobal.h>
#include <OrbGlobal/OrbGlobal.h>
#include <Testing/Testing.h>
#include <Utils/Utils.h>

#include <cstdio>

int main() {
  norva::TRecordingUIServices services;
  services.ScriptAnswers({norva::TMessageResult::No});
  const auto answer =
      services.MessageBox(QStringLiteral("Save?"), QString(), norva::TMessageIcon::Question,
                          norva::TMessageButtons::YesNo);
  if (answer != norva::TMessageResult::No || services.Messages().size() != 1) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
