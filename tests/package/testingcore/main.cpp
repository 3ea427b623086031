// A client of the installed package that links only NorvaRuntime::TestingCore: a test of core code
// records the boxes it would show, with neither the bus nor the widgets.
#include <NorvaGlobal/NorvaGlobal.h>
#include <Testing/RecordingUIServices.h>

#include <cstdio>

int main() {
  norva::TRecordingUIServices services;
  const norva::TScopedUIServices installed(services);
  services.ScriptAnswers({norva::TMessageResult::Cancel});
  const auto answer = norva::UIServices().MessageBox(
      QStringLiteral("Save the changes?"), QStringLiteral("Keypad"), norva::TMessageIcon::Question,
      norva::TMessageButtons::YesNoCancel);
  if (answer != norva::TMessageResult::Cancel || services.Messages().size() != 1 ||
      services.Messages().front().Caption != QStringLiteral("Keypad")) {
    std::fprintf(stderr, "installed package behaves wrongly\n");
    return 1;
  }
  std::puts("installed package OK");
  return 0;
}
