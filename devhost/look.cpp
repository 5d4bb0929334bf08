#include "devhost/look.h"

#include <QApplication>
#include <QFile>
#include <QFontDatabase>
#include <QPalette>
#include <QStyleFactory>

namespace devhost {

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x3c, 0x3f, 0x43), QColor(0x2b, 0x2b, 0x2b));
    palette.setColor(QPalette::Base, QColor(0x1f, 0x21, 0x24));
    palette.setColor(QPalette::Highlight, QColor(0xff, 0x77, 0x07));
    palette.setColor(QPalette::HighlightedText, QColor(0x1b, 0x1c, 0x1e));
    palette.setColor(QPalette::Link, QColor(0xff, 0x9f, 0x07));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, QColor(0xe6, 0xe6, 0xe6));
        palette.setColor(QPalette::Disabled, role, QColor(0x8a, 0x8f, 0x95));
    }
    palette.setColor(QPalette::PlaceholderText, QColor(0x8a, 0x8f, 0x95));
    return palette;
}

/// A system may name fonts that it does not have, one a kind of widget; what then stands in for it can be
/// any.
void chooseStandIns()
{
    const QStringList sansSerifs{QStringLiteral("Tahoma"), QStringLiteral("Arial"),
                                 QStringLiteral("DejaVu Sans"), QStringLiteral("Liberation Sans")};
    for (const char *widget : {"QLabel", "QMenu", "QAbstractItemView", "QStatusBar", "QMessageBox"})
        QFont::insertSubstitutions(QApplication::font(widget).family(), sansSerifs);
    QFont::insertSubstitutions(QFontDatabase::systemFont(QFontDatabase::FixedFont).family(),
                               {QStringLiteral("Courier New"), QStringLiteral("DejaVu Sans Mono"),
                                QStringLiteral("Liberation Mono")});
}

} // namespace

void wearDarkLook()
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    chooseStandIns();
    QApplication::setPalette(darkPalette());
    QFile sheet(QStringLiteral(":/style/plexo-dark.qss"));
    if (sheet.open(QIODevice::ReadOnly))
        qApp->setStyleSheet(QString::fromUtf8(sheet.readAll()));
}

} // namespace devhost
