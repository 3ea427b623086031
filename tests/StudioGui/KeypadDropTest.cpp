// What a keypad button takes from a drop: the object model's drag objects only, a command of the
// library bound with its first button class, another button moved or (with Ctrl) copied; nothing
// from a drag of itself, of another kind of object, or of a command gone during the drag.

#include "StudioFixture.h"

#include <KeypadView.h>

#include <ButtonClasses/ButtonClasses.h>
#include <IR/CommandObject.h>
#include <OrbGlobal/Gui/OrbDragObject.h>

namespace studio {
namespace {

class KeypadDrop : public ::testing::Test {
 protected:
  void SetUp() override {
    mView.SetKeypad(&mKeypad);
    StartAgain();
  }
  // Button 1 bound, the others blank.
  void StartAgain() {
    for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) mKeypad.Button(i).Blank();
    mKeypad.Button(0).SetCaption(QStringLiteral("Lounge"));
    mKeypad.Button(0).SetCommandGUID(QStringLiteral("{00000000-0000-0000-0000-00000000000A}"));
  }
  void TearDown() override {
    norva::Undo().Empty();
    norva::Redo().Empty();
  }

  bool Drop(const QMimeData& data, int index, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    return DropOnTile(*mView.Tile(index), data, modifiers);
  }

  // A button's drag as its tile starts it.
  std::unique_ptr<norva::TOrbDragObject> ButtonDrag(int index) const {
    auto drag = std::make_unique<norva::TOrbDragObject>(mView.Tile(index));
    drag->SetDraggedItem(index);
    return drag;
  }

  norva::TWallKeypad mKeypad;
  TKeypadView mView;
};

TEST_F(KeypadDrop, ACommandIsBoundWithItsFirstButtonClass) {
  norva::TButtonClass power;
  norva::TButtonClass mute;
  ASSERT_TRUE(norva::FindButtonClass(u"Power", power));
  ASSERT_TRUE(norva::FindButtonClass(u"Mute", mute));
  norva::TCommandObject command;
  command.AssignNewGUID();
  command.SetName(QStringLiteral("Amplifier on"));
  command.SetButtonClasses({power, mute});
  norva::TOrbDragObject drag(nullptr);
  drag.SetOrbObject(&command);

  ASSERT_TRUE(Drop(drag, 3));
  const norva::TWallKeypadButton& button = mKeypad.Button(3);
  EXPECT_EQ(button.GetCommandGUID(), command.GetGUIDString());
  EXPECT_EQ(button.GetButtonClass().GetName(), power.GetName());
  EXPECT_EQ(button.GetCaption(), QStringLiteral("Amplifier on"))
      << "a blank caption takes the name";
  EXPECT_EQ(mView.Selected(), 3);
}

TEST_F(KeypadDrop, AButtonMovesOrWithCtrlIsCopied) {
  const struct {
    Qt::KeyboardModifiers Modifiers;
    bool SourceKept;
  } cases[] = {{Qt::NoModifier, false}, {Qt::ControlModifier, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.SourceKept ? "copy" : "move");
    StartAgain();
    ASSERT_TRUE(Drop(*ButtonDrag(0), 4, c.Modifiers));
    EXPECT_EQ(mKeypad.Button(4).GetCaption(), QStringLiteral("Lounge"));
    EXPECT_EQ(mKeypad.Button(0).IsBlank(), !c.SourceKept);
  }
}

TEST_F(KeypadDrop, RefusesWhatItCannotBind) {
  auto gone = std::make_unique<norva::TCommandObject>();
  norva::TOrbDragObject goneDuringTheDrag(nullptr);
  goneDuringTheDrag.SetOrbObject(gone.get());
  gone.reset();
  norva::TOrbObject notACommand;
  norva::TOrbDragObject otherObject(nullptr);
  otherObject.SetOrbObject(&notACommand);
  QMimeData text;
  text.setText(QStringLiteral("Amplifier on"));

  EXPECT_FALSE(Drop(*ButtonDrag(2), 2)) << "a button on itself";
  EXPECT_FALSE(Drop(goneDuringTheDrag, 2));
  EXPECT_FALSE(Drop(otherObject, 2));
  EXPECT_FALSE(Drop(text, 2));
  EXPECT_TRUE(mKeypad.Button(2).IsBlank());
  EXPECT_EQ(mKeypad.Button(0).GetCaption(), QStringLiteral("Lounge"));
}

}  // namespace
}  // namespace studio
