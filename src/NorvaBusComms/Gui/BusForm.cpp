#include <NorvaBusComms/Gui/BusForm.h>

namespace norva {

TNorvaBusForm::TNorvaBusForm(QWidget* owner, TNorvaBusComms* bus)
    : QWidget(owner), TNorvaBusClientCore(static_cast<QObject&>(*this)) {
  Attach(bus);
}

TNorvaBusForm::~TNorvaBusForm() { Disconnect(); }

bool TNorvaBusForm::event(QEvent* event) { return HandleMessage(event) || QWidget::event(event); }

}  // namespace norva
