// The window on screens of every size: the first window lies on the screen whatever its room (a
// scale factor of 2 halves it), and at 1024×700 every part keeps room enough to work in.

#include "StudioFixture.h"

#include <ScreenFit.h>

#include <QScreen>

namespace studio {
namespace {

TEST(StudioScreens, TheFirstWindowIsAsDesignedWhereThereIsRoomAndSmallerWhereNot) {
  const struct {
    QRect Available;
    QSize Size;
  } cases[] = {
      {QRect(0, 0, 1920, 1040), PreferredWindowSize},
      {QRect(0, 0, 800, 470), QSize(720, 423)},  // 1600×1000 with a panel, at scale 2
      {QRect(100, 0, 1024, 700), QSize(922, 630)},
  };
  for (const auto& c : cases) {
    const QRect geometry = FirstWindowGeometry(c.Available);
    EXPECT_EQ(geometry.size(), c.Size);
    EXPECT_TRUE(c.Available.contains(geometry));
  }
}

TEST_F(Studio, TheFirstWindowLiesOnItsScreenAndAt1024By700EveryPartKeepsRoomToWorkIn) {
  auto window = OpenWindow();
  const QRect available = window->screen()->availableGeometry();
  EXPECT_TRUE(available.contains(window->frameGeometry()))
      << window->frameGeometry() << " on " << available;

  window->resize(1024, 700);
  QApplication::processEvents();
  EXPECT_EQ(window->size(), QSize(1024, 700)) << "nothing demands more";
  const QRect keypad = window->KeypadView()->rect();
  for (int i = 0; i < norva::TWallKeypad::ButtonCount; ++i) {
    TButtonTile* tile = window->KeypadView()->Tile(i);
    EXPECT_TRUE(keypad.contains(tile->geometry())) << "button " << i + 1;
    EXPECT_GE(tile->width(), tile->minimumWidth());
  }
  EXPECT_TRUE(keypad.contains(window->KeypadView()->CaptionEditor()->geometry()));
  EXPECT_GE(window->Library()->width(), 250);
  EXPECT_GE(window->BusView()->height(), 120);
}

}  // namespace
}  // namespace studio
