// The developer diagnostics: quiet unless asked for, then written as debug messages of the
// writing module's category through Qt's message handler.
#include <NorvaGlobal/DebugOutput.h>

#include <QLoggingCategory>

#include <gtest/gtest.h>

namespace norva {
namespace {

struct TMessage {
  QString Category;
  QString Text;
};
std::vector<TMessage> gMessages;

void Capture(QtMsgType, const QMessageLogContext& context, const QString& text) {
  gMessages.push_back({QString::fromLatin1(context.category), text});
}

TEST(DebugOutput, EachModuleWritesToItsOwnCategoryOnlyWhenAskedFor) {
  if (DebuggerAttachedAtStartUp() || qEnvironmentVariableIntValue("NORVA_DEBUG_OUTPUT") == 1)
    GTEST_SKIP() << "diagnostics were asked for at start-up";
  const QtMessageHandler previous = qInstallMessageHandler(Capture);
  const struct {
    const QLoggingCategory& Category;
    const char* Name;
  } modules[] = {{BusLog(), "norva.bus"}, {OrbLog(), "norva.orb"}, {UsbLog(), "norva.usb"}};
  for (const auto& module : modules) {
    gMessages.clear();
    DebugOutput(module.Category, QStringLiteral("quiet"));
    EXPECT_TRUE(gMessages.empty()) << module.Name;

    QLoggingCategory::setFilterRules(QStringLiteral("%1.debug=true").arg(module.Name));
    DebugOutput(module.Category, QStringLiteral("asked for"));
    QLoggingCategory::setFilterRules(QString());
    ASSERT_EQ(gMessages.size(), 1u) << module.Name;
    EXPECT_EQ(gMessages[0].Category, module.Name);
    EXPECT_EQ(gMessages[0].Text, "asked for");
  }
  qInstallMessageHandler(previous);
}

}  // namespace
}  // namespace norva
