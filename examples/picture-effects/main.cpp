// Pictures and the docking user interface, shown rather than told: a contact sheet of every
// bitmap effect applied to one picture, and a main window with two captioned dock panels and an
// open pop-up list, both rendered on Qt's offscreen platform into PNG files.
//
//   example_picture-effects [FOLDER]   writes FOLDER/effects.png and FOLDER/docking.png
#include <OrbGraphics/OrbGraphics.h>

#include <QApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMainWindow>
#include <QPainter>
#include <QVBoxLayout>

#include <cstdio>
#include <functional>
#include <vector>

namespace {

// A small scene with hard edges, soft shading, thin lines and text: every effect shows on it.
QImage Scene() {
  QImage image(240, 160, QImage::Format_ARGB32_Premultiplied);
  QPainter painter(&image);
  painter.setRenderHint(QPainter::Antialiasing);
  QLinearGradient sky(0, 0, 0, 160);
  sky.setColorAt(0, QColor(40, 90, 180));
  sky.setColorAt(1, QColor(250, 200, 120));
  painter.fillRect(image.rect(), sky);
  painter.setBrush(QColor(255, 220, 60));
  painter.setPen(Qt::NoPen);
  painter.drawEllipse(QPointF(180, 50), 26, 26);
  painter.setBrush(QColor(30, 110, 60));
  painter.drawPolygon(QPolygonF({QPointF(0, 160), QPointF(70, 70), QPointF(140, 160)}));
  painter.setPen(QPen(Qt::white, 1));
  for (int x = 150; x < 240; x += 6) painter.drawLine(x, 110, x + 20, 160);
  painter.setPen(Qt::black);
  painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 16, QFont::Bold));
  painter.drawText(QRect(10, 8, 150, 30), Qt::AlignLeft, QStringLiteral("Lounge"));
  return image;
}

struct TTile {
  QString Caption;
  QImage Picture;
};

// Tiles in rows of `columns`, each picture centred in a cell with its caption below.
QImage Sheet(const std::vector<TTile>& tiles, int columns, QSize cell) {
  const int rows = (static_cast<int>(tiles.size()) + columns - 1) / columns;
  const int captionHeight = 22;
  QImage sheet(columns * cell.width(), rows * (cell.height() + captionHeight),
               QImage::Format_ARGB32_Premultiplied);
  sheet.fill(QColor(236, 236, 236));
  QPainter painter(&sheet);
  painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 9));
  for (std::size_t i = 0; i < tiles.size(); ++i) {
    const int column = static_cast<int>(i) % columns;
    const int row = static_cast<int>(i) / columns;
    const QRect box(column * cell.width(), row * (cell.height() + captionHeight), cell.width(),
                    cell.height());
    const QImage& picture = tiles[i].Picture;
    const QPoint at = box.center() - QPoint(picture.width() / 2, picture.height() / 2);
    painter.drawImage(at, picture);
    painter.drawText(QRect(box.left(), box.bottom(), box.width(), captionHeight), Qt::AlignCenter,
                     tiles[i].Caption);
  }
  return sheet;
}

QImage EffectsSheet() {
  const QImage scene = Scene();
  std::vector<TTile> tiles{{QStringLiteral("Original"), scene}};
  // Each filter enlarges one small corner eight times, where filters differ most.
  const QImage corner = scene.copy(150, 100, 30, 20);
  using norva::TResampleFilter;
  for (const TResampleFilter filter :
       {TResampleFilter::Box, TResampleFilter::Triangle, TResampleFilter::Hermite,
        TResampleFilter::Bell, TResampleFilter::BSpline, TResampleFilter::Lanczos3,
        TResampleFilter::Mitchell}) {
    tiles.push_back(
        {QString::fromLatin1(norva::ResampleFilterName(filter)) + QStringLiteral(" (x8)"),
         norva::Resample(corner, 240, 160, filter)});
  }
  tiles.push_back({QStringLiteral("Blur 4 px"), norva::Blur(scene, 4)});
  tiles.push_back({QStringLiteral("Sharpen"), norva::Sharpen(scene, 2, 2)});
  tiles.push_back({QStringLiteral("Emboss"), norva::Emboss(scene)});
  tiles.push_back({QStringLiteral("Rotate 30\u00b0"),
                   norva::Resample(norva::Rotate(scene, 30), 200, 160, TResampleFilter::Lanczos3)});
  tiles.push_back({QStringLiteral("Grey scale"), norva::GreyScale(scene)});
  tiles.push_back({QStringLiteral("Invert"), norva::Invert(scene)});
  tiles.push_back({QStringLiteral("Half size, Mitchell"),
                   norva::Resample(scene, 120, 80, TResampleFilter::Mitchell)});
  return Sheet(tiles, 4, QSize(260, 170));
}

// The main window as a user sees it, the open pop-up list painted in where it lies.
QImage DockingScreenshot() {
  QMainWindow window;
  window.setWindowTitle(QStringLiteral("Keypad designer"));
  auto* central = new QWidget;
  auto* layout = new QVBoxLayout(central);
  layout->addWidget(new QLabel(QStringLiteral("Button 1 source:")));
  auto* source = new QLineEdit(QStringLiteral("Tuner"));
  layout->addWidget(source);
  layout->addStretch();
  window.setCentralWidget(central);
  auto* commands =
      new norva::TCaptionedDockPanel(QStringLiteral("Commands"), QStringLiteral("commands"));
  auto* list = new QListWidget;
  list->addItems({QStringLiteral("Lamp on"), QStringLiteral("Lamp off"),
                  QStringLiteral("Input HDMI"), QStringLiteral("Vol+"), QStringLiteral("Mute")});
  commands->setWidget(list);
  auto* properties =
      new norva::TCaptionedDockPanel(QStringLiteral("Properties"), QStringLiteral("properties"));
  properties->setWidget(new QLabel(QStringLiteral("  Caption: Radio\n  Class: System / Tuner")));
  window.addDockWidget(Qt::LeftDockWidgetArea, commands);
  window.addDockWidget(Qt::RightDockWidgetArea, properties);
  window.resize(720, 360);
  window.resizeDocks({commands, properties}, {200, 200}, Qt::Horizontal);
  window.show();
  QApplication::processEvents();

  norva::TPopupList popup;
  popup.SetItems({QStringLiteral("CD"), QStringLiteral("Tuner"), QStringLiteral("Aux"),
                  QStringLiteral("Streamer")});
  popup.SetItemIndex(1);
  popup.PopupUnder(source);
  QApplication::processEvents();

  QImage shot = window.grab().toImage();
  QPainter painter(&shot);
  painter.drawPixmap(window.mapFromGlobal(popup.pos()), popup.grab());
  return shot;
}

bool Save(const QImage& image, const QString& path) {
  if (image.isNull() || !image.save(path)) {
    std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
    return false;
  }
  std::printf("%s: %d x %d\n", qPrintable(path), image.width(), image.height());
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication app(argc, argv);
  const QDir folder(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::currentPath());
  const bool saved = Save(EffectsSheet(), folder.filePath(QStringLiteral("effects.png"))) &&
                     Save(DockingScreenshot(), folder.filePath(QStringLiteral("docking.png")));
  return saved ? 0 : 1;
}
