#include "host/modal_box.h"

#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QWindow>

#include <algorithm>

namespace {

constexpr char OwnerProperty[] = "owner";

QVariant markOf(const QObject *owner)
{
    return QVariant::fromValue(quintptr(owner));
}

/// What a device sends over and over must not pile up boxes.
bool isOpen(const BoxText &text, const QObject *owner)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return std::any_of(windows.cbegin(), windows.cend(), [&](const QWidget *window) {
        const auto *box = qobject_cast<const QMessageBox *>(window);
        return box && box->isVisible() && box->text() == text.text
            && box->property(OwnerProperty) == markOf(owner);
    });
}

/// Names of devices stand in some of the texts.
void fillIn(QMessageBox *box, const BoxText &text)
{
    box->setTextFormat(Qt::PlainText);
    box->setText(text.text);
    box->setInformativeText(text.informativeText);
    for (QLabel *label : box->findChildren<QLabel *>())
        label->setTextFormat(Qt::PlainText);
    box->setDetailedText(text.detailedText);
    box->setDefaultButton(text.defaultButton);
}

/// Only the windows of @p window wait for the answer. All do while a dialog runs already, as it could else be
/// answered first and nothing would come of that before this one is; and while that window is not to be seen,
/// which would hide the box, too.
void blockOnly(QMessageBox *box, const QWidget *window)
{
    if (QApplication::activeModalWidget() || !window->isVisible() || window->isMinimized())
        return;
    box->setWindowModality(Qt::WindowModal);
    box->winId(); // makes the handle
    box->windowHandle()->setTransientParent(window->windowHandle());
}

void centre(QMessageBox *box, const QWidget *window)
{
    box->show();
    box->move(window->frameGeometry().topLeft() + window->rect().center() - box->rect().center());
}

} // namespace

QMessageBox::StandardButton runModalBox(const BoxText &text, const QObject *owner, const QWidget *over)
{
    if (isOpen(text, owner))
        return QMessageBox::NoButton;
    const QPointer<const QObject> alive(owner);
    // On the heap: the nested event loop may destroy everything around the caller, the box included.
    QPointer<QMessageBox> box(new QMessageBox(text.icon, text.title, QString(), text.buttons));
    box->setProperty(OwnerProperty, markOf(owner));
    fillIn(box, text);
    QObject::connect(owner, &QObject::destroyed, box.data(), &QDialog::reject);
    if (over) {
        box->setStyleSheet(over->window()->styleSheet());
        blockOnly(box, over->window());
        centre(box, over->window());
    }
    const int answer = box->exec();
    delete box;
    return alive ? QMessageBox::StandardButton(answer) : QMessageBox::NoButton;
}
