#pragma once
// The application's side of keypad documents. Both interfaces are implemented by the application
// and live as long as it chooses: documents hold no reference to them and count none.

#include <KeypadDevice/KeypadTypes.h>

namespace norva {

// What a document asks of the application.
class IKeypadClient {
 public:
  virtual ~IKeypadClient() = default;

  // Lets the user choose where `device` is saved (a save-as dialog). The client sets the
  // document's name to the chosen path; leaving it as it was means the user chose none.
  virtual void ChooseFileName(TKeypadDevice& device) = 0;
};

// The designer's editing surface for one document.
class IKeypadDesigner {
 public:
  virtual ~IKeypadDesigner() = default;

  // The document being edited, or nullptr.
  virtual TKeypadDevice* GetKeypadDevice() const = 0;
  // Shows the document's contents anew after a change made outside the surface: a load, a
  // clear, an undo, another instance of the same configuration.
  virtual void RefreshDesign() = 0;
};

// The one client of every document: nullptr until the application sets it.
IKeypadClient* KeypadClient();
// Sets the client (not owned; nullptr removes it). Returns the previous one.
IKeypadClient* SetKeypadClient(IKeypadClient* client);

}  // namespace norva
