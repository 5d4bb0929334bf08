#include "devhost/plain_text.h"

#include <QTextDocument>

namespace devhost {

QString plainTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text) : text;
}

PlainBox::PlainBox(Icon icon, const QString &title, const QString &text, StandardButtons buttons,
                   QWidget *window)
    : QMessageBox(icon, title, QString(), buttons, window)
{
    setTextFormat(Qt::PlainText);
    setText(text);
}

} // namespace devhost
