#pragma once
// Commands sent together, or, when alternating, one at a time in turn: a toggle between exactly
// two commands (a power key that sends on, then off).

#include <IR/CommandObjectList.h>

namespace norva {

class TIRMacro : public TCommandObjectList {
  Q_OBJECT
  Q_PROPERTY(bool Alternating READ GetAlternating WRITE SetAlternating)

 public:
  Q_INVOKABLE explicit TIRMacro(norva::TOrbObject* owner = nullptr);

  // True only while the flag is set and the macro holds exactly two commands.
  bool GetAlternating() const;
  // Stores the flag only when the macro holds exactly two commands, otherwise false.
  void SetAlternating(bool alternating);

  void AssignTo(QObject* dest) const override;
  // The commands, then "alternating" as "yes" or "no".
  void Save(pugi::xml_node element, bool indexed) const override;
  // Alternating exactly when "alternating" holds "yes".
  void Load(pugi::xml_node element, bool indexed) override;

 private:
  bool mAlternating = false;
};

}  // namespace norva
