// The user-interface helpers: menus merged and taken out again to the letter, list rows' groups,
// a themed header that shows its caption, and a graphic drawn by handlers.

#include <Utils/Gui/GraphicInterface.h>
#include <Utils/Gui/InterfaceHelpers.h>
#include <Utils/Gui/MenuMerging.h>

#include <QAction>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QStandardItemModel>

#include <gtest/gtest.h>

namespace norva {
namespace {

// Every menu of a bar with the texts of its entries, as a user reads them.
QStringList Describe(QMenuBar& bar) {
  QStringList lines;
  for (QAction* top : bar.actions()) {
    QString line = top->text() + u':';
    if (top->menu()) {
      for (QAction* item : top->menu()->actions())
        line += u' ' + (item->isSeparator() ? QStringLiteral("|") : item->text());
    }
    lines.append(line);
  }
  return lines;
}

TEST(MenuMerging, MergedMenusJoinByTitleAndLeaveExactlyAsTheyCame) {
  QMenuBar application;
  QMenu* file = application.addMenu(QStringLiteral("&File"));
  file->addAction(QStringLiteral("Open"));
  file->addAction(QStringLiteral("Exit"));
  application.addMenu(QStringLiteral("&Help"))->addAction(QStringLiteral("About"));
  const QStringList before = Describe(application);

  QMenuBar keypad;
  keypad.addMenu(QStringLiteral("F&ile"))->addAction(QStringLiteral("Upload"));
  keypad.addMenu(QStringLiteral("&Buttons"))->addAction(QStringLiteral("Assign command"));

  MergeMenus(&application, &keypad);
  EXPECT_EQ(Describe(application),
            (QStringList{"&File: Open Exit | Upload", "&Help: About", "&Buttons: Assign command"}));
  MergeMenus(&application, &keypad);  // twice is once
  EXPECT_EQ(Describe(application).size(), 3);
  EXPECT_EQ(Describe(application)[0], "&File: Open Exit | Upload");

  UnmergeMenus(&application, &keypad);
  EXPECT_EQ(Describe(application), before);
  EXPECT_EQ(Describe(keypad), (QStringList{"F&ile: Upload", "&Buttons: Assign command"}))
      << "the source keeps its own";
  UnmergeMenus(&application, &keypad);  // nothing merged: nothing happens
  EXPECT_EQ(Describe(application), before);
}

TEST(InterfaceHelpers, GroupsHeadersRegionsAndHandlerGraphics) {
  QStandardItemModel model(3, 1);
  model.setData(model.index(0, 0), 4, GroupIDRole);
  model.setData(model.index(1, 0), QStringLiteral("four"), GroupIDRole);
  EXPECT_EQ(GetGroupID(model.index(0, 0)), 4);
  EXPECT_EQ(GetGroupID(model.index(1, 0)), -1);
  EXPECT_EQ(GetGroupID(model.index(2, 0)), -1);
  EXPECT_EQ(GetGroupID(QModelIndex()), -1);

  // The caption is drawn: the strip with it differs from the strip without it.
  QImage withCaption(200, 24, QImage::Format_ARGB32);
  QImage without(200, 24, QImage::Format_ARGB32);
  for (auto [image, caption] :
       {std::pair{&withCaption, QStringLiteral("Commands")}, std::pair{&without, QString()}}) {
    image->fill(Qt::white);
    QPainter painter(image);
    ThemedHeaderPaint(painter, image->rect(), caption);
  }
  EXPECT_NE(withCaption, without);
  EXPECT_NE(without.pixel(100, 12), qRgb(255, 255, 255)) << "the strip itself is painted";

  EXPECT_TRUE(CreateEmptyRegion().isEmpty());

  TGraphicInterface none;
  EXPECT_TRUE(none.GetEmpty());
  none.SetWidth(12);
  EXPECT_EQ(none.GetWidth(), 12);
  int drawn = 0;
  TGraphicInterface swatch(
      [&](QPainter& canvas, const QRect& rect) {
        ++drawn;
        canvas.fillRect(rect, Qt::red);
      },
      [] { return 16; }, [] { return 10; });
  EXPECT_FALSE(swatch.GetEmpty());
  EXPECT_EQ(swatch.GetWidth(), 16);
  EXPECT_EQ(swatch.GetHeight(), 10);
  TGraphicInterface copy;
  copy.Assign(swatch);
  const QImage icon = copy.ToIcon(QSize(8, 8)).pixmap(QSize(8, 8)).toImage();
  EXPECT_EQ(icon.pixel(4, 4), qRgb(255, 0, 0));
  EXPECT_EQ(drawn, 1);
}

}  // namespace
}  // namespace norva
