#pragma once
// The keypad being designed: one tile per button showing its caption, button class and command.
// A command dropped on a tile binds it; tiles drag to each other (move, or copy with Ctrl); the
// selected tile's caption is edited in the field below the grid. Every edit is one undo step.

#include <KeypadDevice/WallKeypad.h>

#include <QWidget>

#include <array>
#include <functional>

class QLineEdit;
class QLabel;

namespace studio {

class TButtonTile;

class TKeypadView : public QWidget {
  Q_OBJECT

 public:
  explicit TKeypadView(QWidget* parent = nullptr);

  // The keypad shown (not owned); nullptr shows nothing.
  void SetKeypad(norva::TWallKeypad* keypad);
  norva::TWallKeypad* Keypad() const { return mKeypad; }
  // Shows the keypad's state anew (after a load, an undo, any change).
  void Refresh();
  // How a bound command's GUID is shown (its name in the library); by default the GUID itself.
  void SetCommandNamer(std::function<QString(const QString& guid)> namer);

  int Selected() const { return mSelected; }
  void Select(int index);
  TButtonTile* Tile(int index) const { return mTiles.at(static_cast<std::size_t>(index)); }
  QLineEdit* CaptionEditor() const { return mCaption; }
  // A caption typed for the selected button becomes its caption, Enter pressed or not; called
  // before anything else happens to the keypad (another button selected, a save, a close).
  void CommitCaption();

  // Edits, each closed as one undo step.
  void Bind(int index, const QString& guid, const QString& name,
            const norva::TButtonClass& buttonClass);
  void SetCaption(int index, const QString& caption);
  void CopyButton(int from, int to);
  void MoveButton(int from, int to);
  void ClearButton(int index);
  // Through the library's clipboard slot: a copy of the button waits there; a cut also clears
  // it; a paste gives the button at `index` the waiting button's contents (false when none waits).
  void CopyToClipboard(int index);
  void CutToClipboard(int index);
  bool PasteFromClipboard(int index);
  static bool ButtonInClipboard();

 signals:
  void Edited();
  void SelectionChanged(int index);

 private:
  // One user action on the keypad, after any caption still being typed: its edits become one
  // undo step.
  template <typename F>
  void AsOneStep(F edit);

  std::array<TButtonTile*, norva::TWallKeypad::ButtonCount> mTiles{};
  QLineEdit* mCaption;
  QLabel* mSelectedLabel;
  norva::TWallKeypad* mKeypad = nullptr;
  std::function<QString(const QString&)> mCommandName;
  int mSelected = 0;
};

}  // namespace studio
