// Column widths follow the widest name as the font measures it, on its own or on a device.

#include <IR/IR.h>
#include <IR_Database/Gui/NameWidths.h>
#include <IR_Database/IR_Database.h>
#include <OrbGlobal/Undo/UndoControl.h>

#include <QFontMetrics>
#include <QImage>

#include <gtest/gtest.h>

using namespace norva;

TEST(NameWidths, TheWidestNameSetsTheColumn) {
  DisableUndo();
  TMake make;
  const QFont font(QStringLiteral("Sans"), 12);
  EXPECT_EQ(GetLongestModelNameWidth(make, font), 0);
  make.AddNewModel()->SetName("TV");
  TModel* receiver = make.AddNewModel();
  receiver->SetName("Receiver with a long model name");
  receiver->AddNewCommandObject(&TIRStream::staticMetaObject)->SetName("Vol+");
  receiver->AddNewCommandObject(&TIPCommand::staticMetaObject);  // shown as "Unknown IP Command"

  const QFontMetrics metrics(font);
  EXPECT_EQ(GetLongestModelNameWidth(make, font),
            metrics.horizontalAdvance(QStringLiteral("Receiver with a long model name")));
  EXPECT_EQ(GetLongestCommandNameWidth(*receiver, font),
            metrics.horizontalAdvance(QStringLiteral("Unknown IP Command")));
  QImage page(100, 100, QImage::Format_RGB32);
  page.setDotsPerMeterX(11811);  // 300 dpi: the same text is wider in device pixels
  page.setDotsPerMeterY(11811);
  EXPECT_GT(GetLongestModelNameWidth(make, font, &page), GetLongestModelNameWidth(make, font));
  EnableUndo();
}
