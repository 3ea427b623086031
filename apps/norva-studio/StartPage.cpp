#include "StartPage.h"

#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace studio {

namespace {

constexpr int PathRole = Qt::UserRole;
constexpr int PublicRole = Qt::UserRole + 1;

QLabel* Heading(const QString& text) {
  auto* label = new QLabel(text);
  QFont font = label->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * 1.3);
  label->setFont(font);
  return label;
}

QPushButton* ButtonFor(QAction* action) {
  auto* button = new QPushButton(action->text().remove(QLatin1Char('&')));
  button->setToolTip(action->toolTip());
  QObject::connect(button, &QPushButton::clicked, action, &QAction::trigger);
  return button;
}

}  // namespace

TStartPage::TStartPage(const QList<QAction*>& actions, QWidget* parent)
    : QScrollArea(parent),
      mLinkState(new QLabel),
      mLibraries(new QListWidget),
      mKeypads(new QListWidget) {
  setObjectName(QStringLiteral("start"));
  auto* explanation = new QLabel(
      tr("No IR library is open. Open the installation's library, or create one, to keep the "
         "codes you learn and import; open the public library to bind the amplifiers' built-in "
         "commands. Then drag commands onto the keypad's buttons. Connect to the installation, or "
         "to the simulator when no hardware is at hand, to try them."));
  explanation->setWordWrap(true);
  auto* buttons = new QVBoxLayout;
  for (QAction* action : actions) buttons->addWidget(ButtonFor(action));
  buttons->addWidget(mLinkState);
  buttons->addStretch();
  mLinkState->setWordWrap(true);

  auto* recent = new QVBoxLayout;
  recent->addWidget(Heading(tr("Recent libraries")));
  recent->addWidget(mLibraries);
  recent->addWidget(Heading(tr("Recent keypads")));
  recent->addWidget(mKeypads);
  auto* columns = new QHBoxLayout;
  columns->addLayout(buttons);
  columns->addLayout(recent, 1);
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(Heading(tr("Start")));
  layout->addWidget(explanation);
  layout->addLayout(columns, 1);
  setWidget(page);
  setWidgetResizable(true);
  setFrameShape(QFrame::NoFrame);

  connect(mLibraries, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
    emit LibraryChosen(item->data(PathRole).toString(), item->data(PublicRole).toBool());
  });
  connect(mKeypads, &QListWidget::itemActivated, this,
          [this](QListWidgetItem* item) { emit KeypadChosen(item->data(PathRole).toString()); });
}

void TStartPage::ShowRecent(const QStringList& libraries, const QStringList& publicLibraries,
                            const QStringList& keypads) {
  mLibraries->clear();
  for (const QString& path : libraries) AddFile(*mLibraries, path, QString());
  for (const QString& path : publicLibraries) {
    AddFile(*mLibraries, path, tr("public, read-only"));
    mLibraries->item(mLibraries->count() - 1)->setData(PublicRole, true);
  }
  mKeypads->clear();
  for (const QString& path : keypads) AddFile(*mKeypads, path, QString());
}

void TStartPage::AddFile(QListWidget& list, const QString& path, const QString& note) {
  const QFileInfo file(path);
  const QString name = note.isEmpty() ? file.fileName() : tr("%1 (%2)").arg(file.fileName(), note);
  auto* item = new QListWidgetItem(tr("%1\n%2").arg(name, file.absolutePath()), &list);
  item->setData(PathRole, path);
  item->setToolTip(path);
}

void TStartPage::ShowLinkState(const QString& state) { mLinkState->setText(state); }

}  // namespace studio
