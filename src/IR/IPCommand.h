#pragma once
// Bytes sent to equipment over the network, to a port over TCP or UDP.

#include <IR/DataCommand.h>
#include <IR/IRTypes.h>

namespace norva {

class TIPCommand : public TDataCommand {
  Q_OBJECT
  Q_CLASSINFO("ClassGUID", "{8E2D4A6C-1F3B-4C5D-9E7A-0B1C2D3E4F56}")
  Q_CLASSINFO("XmlElement", "ip_command")
  Q_PROPERTY(norva::TIPProtocol IPProtocol READ GetIPProtocol WRITE SetIPProtocol)
  Q_PROPERTY(quint16 Port READ GetPort WRITE SetPort)

 public:
  Q_INVOKABLE explicit TIPCommand(norva::TOrbObject* owner = nullptr);

  TIPProtocol GetIPProtocol() const { return mProtocol; }
  void SetIPProtocol(TIPProtocol protocol) { ChangeProperty("IPProtocol", mProtocol, protocol); }
  quint16 GetPort() const { return mPort; }
  void SetPort(quint16 port) { ChangeProperty("Port", mPort, port); }

  // The user's name, or "Unknown IP Command".
  QString GetName() const override;
  // Another network command with the same protocol, port and data.
  bool Match(const TCommandObject* other) const override;
  void AssignTo(QObject* dest) const override;
  // Nothing at all for a command without data.
  void Save(pugi::xml_node element) const override;

 protected:
  void LoadElement(pugi::xml_node child) override;

 private:
  TIPProtocol mProtocol = TCP_IP;
  quint16 mPort = 0;
};

}  // namespace norva
