#include "host/modal_box.h"

#include <QPointer>

namespace {

void centre(QMessageBox *box, const QWidget *over)
{
    const QWidget *window = over->window();
    box->show();
    box->move(window->frameGeometry().topLeft() + window->rect().center() - box->rect().center());
}

} // namespace

QMessageBox::StandardButton runModalBox(const BoxText &text, const QObject *owner, const QWidget *centreOver)
{
    const QPointer<const QObject> alive(owner);
    // On the heap: the nested event loop may destroy everything around the caller, the box included.
    QPointer<QMessageBox> box(new QMessageBox(text.icon, text.title, text.text, text.buttons));
    box->setInformativeText(text.informativeText);
    box->setDetailedText(text.detailedText);
    box->setDefaultButton(text.defaultButton);
    QObject::connect(owner, &QObject::destroyed, box.data(), &QDialog::reject);
    if (centreOver) {
        box->setStyleSheet(centreOver->window()->styleSheet());
        centre(box, centreOver);
    }
    const int answer = box->exec();
    delete box;
    return alive ? QMessageBox::StandardButton(answer) : QMessageBox::NoButton;
}
