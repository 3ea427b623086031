#pragma once
// The one seam through which library code reaches the user: message boxes, the busy cursor and the
// system clipboard. Library code never shows UI itself. A program with widgets installs the Qt
// implementation; tests install TRecordingUIServices; without either, the headless default answers.

#include <QString>

namespace norva {

enum class TMessageIcon { None, Information, Exclamation, Stop, Question };
enum class TMessageButtons { OK, OKCancel, YesNo, YesNoCancel };
enum class TMessageResult { OK, Cancel, Yes, No };

class TUIServices {
 public:
  virtual ~TUIServices() = default;

  // A modal message box; returns the button the user chose.
  virtual TMessageResult MessageBox(const QString& text, const QString& caption, TMessageIcon icon,
                                    TMessageButtons buttons) = 0;
  // Busy cursor on or off; calls nest, the cursor returns when every "on" has had its "off".
  virtual void SetBusyCursor(bool busy) = 0;

  virtual void EmptyClipboard() = 0;
  // True when the system clipboard holds data in any format.
  virtual bool ClipboardHoldsData() = 0;
  virtual QString ClipboardText() = 0;
  virtual void SetClipboardText(const QString& text) = 0;
};

// The answer a box gets when nobody is there to click: OK where offered; otherwise the choice that
// changes nothing (No for Yes/No, Cancel for Yes/No/Cancel).
TMessageResult UnattendedAnswer(TMessageButtons buttons);

// A box's text as one line, for a terminal or a log. Its lines (CR LF, LF or CR apart) are joined
// with "; ", its paragraphs (apart by an empty line) with ": ", or with a blank alone after a
// line that ends a sentence: "Error loading a.xml\r\n\r\nbad tag\r\nLine: 3, position: 7"
// reads "Error loading a.xml: bad tag; Line: 3, position: 7".
QString MessageOnOneLine(const QString& text);

// Writes every box to stderr on one line (MessageOnOneLine) and answers it unattended; keeps the
// clipboard in the process.
class THeadlessUIServices : public TUIServices {
 public:
  TMessageResult MessageBox(const QString& text, const QString& caption, TMessageIcon icon,
                            TMessageButtons buttons) override;
  void SetBusyCursor(bool busy) override;
  void EmptyClipboard() override;
  bool ClipboardHoldsData() override;
  QString ClipboardText() override;
  void SetClipboardText(const QString& text) override;

 private:
  QString mClipboard;
  bool mClipboardSet = false;
};

// The services in force (the headless default until a program installs its own).
TUIServices& UIServices();
// Installs `services` (not owned; nullptr restores the default). Returns the previous installation.
TUIServices* SetUIServices(TUIServices* services);

// Installs services for one scope, restoring the previous ones on exit.
class TScopedUIServices {
 public:
  explicit TScopedUIServices(TUIServices& services) : mPrevious(SetUIServices(&services)) {}
  ~TScopedUIServices() { SetUIServices(mPrevious); }
  TScopedUIServices(const TScopedUIServices&) = delete;
  TScopedUIServices& operator=(const TScopedUIServices&) = delete;

 private:
  TUIServices* mPrevious;
};

// The busy cursor for one scope: on at construction, off when the scope ends however it ends.
class TBusyCursor {
 public:
  TBusyCursor() { UIServices().SetBusyCursor(true); }
  ~TBusyCursor() { UIServices().SetBusyCursor(false); }
  TBusyCursor(const TBusyCursor&) = delete;
  TBusyCursor& operator=(const TBusyCursor&) = delete;
};

}  // namespace norva
