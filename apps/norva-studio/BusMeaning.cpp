#include "BusMeaning.h"

#include <IR/NorvaCodes.h>
#include <Simulation/DeviceSimulator.h>

#include <QCoreApplication>
#include <QHash>
#include <QMetaEnum>

namespace studio {

namespace {

constexpr norva::TCommand FirstStatusReport = 0x04;
constexpr norva::TCommand LastStatusReport = 0x07;

QString Tr(const char* text) { return QCoreApplication::translate("studio::BusMeaning", text); }

// A native command's packet is its frame's command group and command bytes; the zone byte varies.
QByteArray NativeKey(norva::TCommand command, const QByteArray& data) {
  return QByteArray(1, static_cast<char>(command)) + data;
}

// Every native command of every kind of device, by its packet, named once.
const QHash<QByteArray, QString>& NativeNames() {
  static const QHash<QByteArray, QString> names = [] {
    QHash<QByteArray, QString> found;
    const QMetaEnum commands = QMetaEnum::fromType<norva::TNorvaCommand>();
    const QMetaEnum types = QMetaEnum::fromType<norva::TNorvaCommandType>();
    for (int t = 0; t < types.keyCount(); ++t) {
      const auto type = static_cast<norva::TNorvaCommandType>(types.value(t));
      for (int c = 0; c < commands.keyCount(); ++c) {
        const auto command = static_cast<norva::TNorvaCommand>(commands.value(c));
        const std::optional<norva::TCommandPacket> packet =
            norva::NorvaFramePacket(norva::NorvaFrame(-1, command, type));
        if (packet)
          found.insert(NativeKey(packet->Cmd, packet->GetDataBytes()),
                       norva::NorvaFunctionName(command));
      }
    }
    return found;
  }();
  return names;
}

QString RequestMeaning(norva::TCommand command, const QByteArray& data) {
  if (const auto native = NativeNames().find(NativeKey(command, data));
      native != NativeNames().end())
    return native.value();
  if (command == norva::sim::StatusRequestCommand) return Tr("status request");
  if (command == norva::sim::BurstCommand) return Tr("numbered burst (simulator)");
  if (command >= FirstStatusReport && command <= LastStatusReport) return Tr("status report");
  if (command == norva::KeypressCommand && data.size() == 1) {
    const auto byte = static_cast<std::uint8_t>(data[0]);
    return Tr("key %1 pressed (repeat %2)").arg(byte & 0x1F).arg(byte >> 5);
  }
  return {};
}

}  // namespace

QString BusPacketMeaning(norva::TCommand command, const QByteArray& data) {
  if (command < norva::AcknowledgeOffset) return RequestMeaning(command, data);
  const QString acknowledged =
      RequestMeaning(static_cast<norva::TCommand>(command - norva::AcknowledgeOffset), data);
  return acknowledged.isEmpty() ? Tr("acknowledgement") : Tr("acknowledges %1").arg(acknowledged);
}

}  // namespace studio
