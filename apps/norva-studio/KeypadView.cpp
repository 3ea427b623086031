#include "KeypadView.h"

#include "ButtonTile.h"

#include <OrbGlobal/Clipboard/OrbClipboard.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>

namespace studio {

TKeypadView::TKeypadView(QWidget* parent)
    : QWidget(parent), mCaption(new QLineEdit(this)), mSelectedLabel(new QLabel(this)) {
  auto* grid = new QGridLayout;
  for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) {
    auto* tile = new TButtonTile(i, this);
    mTiles.at(static_cast<std::size_t>(i)) = tile;
    grid->addWidget(tile, i / 2, i % 2);
    connect(tile, &TButtonTile::Clicked, this, &TKeypadView::Select);
    connect(tile, &TButtonTile::CommandDropped, this,
            [this](int index, const norva::TCommandObject& command) {
              const norva::TButtonClasses& classes = command.GetButtonClasses();
              Bind(index, command.GetGUIDString(), command.GetName(),
                   classes.isEmpty() ? norva::TButtonClass() : classes.first());
            });
    connect(tile, &TButtonTile::ButtonDropped, this, [this](int from, int to, bool copy) {
      copy ? CopyButton(from, to) : MoveButton(from, to);
    });
  }
  mCaption->setObjectName(QStringLiteral("caption"));
  connect(mCaption, &QLineEdit::editingFinished, this, &TKeypadView::CommitCaption);
  // Enter gives the keyboard back to the keypad: the document's keys work on its buttons again.
  connect(mCaption, &QLineEdit::returnPressed, this, [this] { Tile(mSelected)->setFocus(); });
  auto* form = new QFormLayout;
  form->addRow(mSelectedLabel, mCaption);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(grid);
  layout->addLayout(form);
  layout->addStretch();
  Refresh();
}

void TKeypadView::SetKeypad(norva::TWallKeypad* keypad) {
  mKeypad = keypad;
  Refresh();
}

void TKeypadView::SetCommandNamer(std::function<QString(const QString& guid)> namer) {
  mCommandName = std::move(namer);
  Refresh();
}

void TKeypadView::Refresh() {
  setEnabled(mKeypad != nullptr);
  for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) {
    if (!mKeypad) {
      Tile(i)->Show(QString(), QString(), QString(), false);
      continue;
    }
    const norva::TWallKeypadButton& button = mKeypad->Button(i);
    Tile(i)->Show(button.GetCaption(),
                  button.GetButtonClass().IsNone() ? QString() : button.GetButtonClass().GetName(),
                  mCommandName ? mCommandName(button.GetCommandGUID()) : button.GetCommandGUID(),
                  i == mSelected);
  }
  mSelectedLabel->setText(tr("Button %1 caption:").arg(mSelected + 1));
  if (mKeypad && !mCaption->hasFocus()) mCaption->setText(mKeypad->Button(mSelected).GetCaption());
}

void TKeypadView::Select(int index) {
  CommitCaption();
  mSelected = index;
  if (mKeypad) mCaption->setText(mKeypad->Button(index).GetCaption());
  Refresh();
  emit SelectionChanged(index);
}

void TKeypadView::CommitCaption() {
  if (!mCaption->isModified()) return;
  mCaption->setModified(false);
  SetCaption(mSelected, mCaption->text());
}

template <typename F>
void TKeypadView::AsOneStep(F edit) {
  CommitCaption();
  edit();
  norva::MaintainUndo();
}

void TKeypadView::Bind(int index, const QString& guid, const QString& name,
                       const norva::TButtonClass& buttonClass) {
  if (!mKeypad) return;
  AsOneStep([&] {
    norva::TWallKeypadButton& button = mKeypad->Button(index);
    button.SetCommandGUID(guid);
    button.SetButtonClass(buttonClass);
    if (button.GetCaption().isEmpty()) button.SetCaption(name);
  });
  Select(index);
  emit Edited();
}

void TKeypadView::SetCaption(int index, const QString& caption) {
  if (!mKeypad || mKeypad->Button(index).GetCaption() == caption) return;
  AsOneStep([&] { mKeypad->Button(index).SetCaption(caption); });
  Refresh();
  emit Edited();
}

void TKeypadView::CopyButton(int from, int to) {
  if (!mKeypad || from == to) return;
  AsOneStep([&] { mKeypad->Button(to).CopyFrom(mKeypad->Button(from)); });
  Select(to);
  emit Edited();
}

void TKeypadView::MoveButton(int from, int to) {
  if (!mKeypad || from == to) return;
  AsOneStep([&] {
    mKeypad->Button(to).CopyFrom(mKeypad->Button(from));
    mKeypad->Button(from).Blank();
  });
  Select(to);
  emit Edited();
}

void TKeypadView::CopyToClipboard(int index) {
  CommitCaption();
  if (mKeypad) mKeypad->Button(index).CopyToClipboard();
}

void TKeypadView::CutToClipboard(int index) {
  CopyToClipboard(index);
  ClearButton(index);
}

bool TKeypadView::ButtonInClipboard() {
  return qobject_cast<const norva::TWallKeypadButton*>(norva::GetClipboardObject()) != nullptr;
}

bool TKeypadView::PasteFromClipboard(int index) {
  const auto* source = qobject_cast<const norva::TWallKeypadButton*>(norva::GetClipboardObject());
  if (!mKeypad || !source) return false;
  AsOneStep([&] { mKeypad->Button(index).CopyFrom(*source); });
  Select(index);
  emit Edited();
  return true;
}

void TKeypadView::ClearButton(int index) {
  if (!mKeypad || mKeypad->Button(index).IsBlank()) return;
  AsOneStep([&] { mKeypad->Button(index).Blank(); });
  Refresh();
  emit Edited();
}

}  // namespace studio
