#pragma once
// The UI services of a program with widgets: Qt message boxes, the application's override cursor
// for the busy cursor, and the system clipboard. A program installs one with SetUIServices once
// its QApplication exists.

#include <NorvaGlobal/UIServices.h>

namespace norva {

class TQtUIServices : public TUIServices {
 public:
  TQtUIServices() = default;
  // Takes back any busy cursor still shown.
  ~TQtUIServices() override;
  TQtUIServices(const TQtUIServices&) = delete;
  TQtUIServices& operator=(const TQtUIServices&) = delete;

  TMessageResult MessageBox(const QString& text, const QString& caption, TMessageIcon icon,
                            TMessageButtons buttons) override;
  // Nests; an "off" without its "on" leaves other override cursors alone.
  void SetBusyCursor(bool busy) override;
  void EmptyClipboard() override;
  // True when the clipboard's data offers any format at all.
  bool ClipboardHoldsData() override;
  QString ClipboardText() override;
  void SetClipboardText(const QString& text) override;

 private:
  int mBusyDepth = 0;
};

}  // namespace norva
