#include "devhost/look.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QFontDatabase>
#include <QHeaderView>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPalette>
#include <QRegularExpression>
#include <QStyleFactory>
#include <QTableView>

#include <utility>

namespace devhost {

namespace {

constexpr qreal NoteShare = 0.85; // of the text size

// Of the application.
constexpr char ColorsProperty[] = "lookColors";
constexpr char LightProperty[] = "lookIsLight";
constexpr char SizeProperty[] = "lookTextPercent";

constexpr char FixedProperty[] = "wearsFixedFont"; // of a widget
constexpr int CellMargin = 18;

/// What is worn; empty before.
QJsonObject colors()
{
    return qApp->property(ColorsProperty).toJsonObject();
}

QByteArray resource(const QString &name)
{
    QFile file(QStringLiteral(":/style/") + name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPalette palette()
{
    QPalette palette(lookColor("button"), lookColor("ground"));
    palette.setColor(QPalette::Base, lookColor("well"));
    palette.setColor(QPalette::Highlight, lookColor("on"));
    palette.setColor(QPalette::HighlightedText, lookColor("onText"));
    palette.setColor(QPalette::Link, lookColor("focus"));
    palette.setColor(QPalette::ToolTipBase, lookColor("tip"));
    palette.setColor(QPalette::ToolTipText, lookColor("tipText"));
    palette.setColor(QPalette::ButtonText, lookColor("buttonText"));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, lookColor("buttonOffText"));
    for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text}) {
        palette.setColor(role, lookColor("text"));
        palette.setColor(QPalette::Disabled, role, lookColor("off"));
    }
    palette.setColor(QPalette::PlaceholderText, lookColor("quiet"));
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

void setTextSize(int percent)
{
    static const QFont systemFont = QApplication::font();
    QFont font = systemFont;
    font.setPointSizeF(systemFont.pointSizeF() * percent / 100);
    QApplication::setFont(font);
    // A system may have given some kinds of widgets a size of their own.
    for (const char *widget : {"QMenu", "QMenuBar", "QMessageBox", "QStatusBar", "QAbstractItemView"})
        QApplication::setFont(font, widget);
}

QString sheet()
{
    static const QRegularExpression name(QStringLiteral("@(\\w+)"));
    QString text = QString::fromUtf8(resource(QStringLiteral("plexo.qss")));
    text.replace(QLatin1String("@noteSize"),
                 QStringLiteral("%1pt").arg(QApplication::font().pointSizeF() * NoteShare, 0, 'f', 1));
    const QJsonObject table = colors();
    QString filled;
    int from = 0;
    for (auto it = name.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        filled += text.midRef(from, match.capturedStart() - from);
        filled += table.value(match.captured(1)).toString();
        from = match.capturedEnd();
    }
    return filled + text.midRef(from);
}

qreal digitOf(const QWidget &widget)
{
    constexpr int many = 20; // one alone is rounded
    return qreal(widget.fontMetrics().horizontalAdvance(QString(many, QLatin1Char('0')))) / many;
}

/// Follows the font of a table, which owns it.
class TableSizes : public QObject
{
public:
    TableSizes(QTableView *view, int rowMargin)
        : QObject(view)
        , m_view(view)
        , m_rowMargin(rowMargin)
        , m_digit(digitOf(*view))
    {
        view->installEventFilter(this);
        sizeRows();
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FontChange) {
            sizeRows();
            sizeColumns();
        }
        return QObject::eventFilter(watched, event);
    }

private:
    void sizeRows()
    {
        m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + m_rowMargin);
    }

    void sizeColumns()
    {
        const qreal before = std::exchange(m_digit, digitOf(*m_view));
        for (int column = 0; column < m_view->horizontalHeader()->count(); ++column) {
            const int text = m_view->columnWidth(column) - CellMargin;
            if (text > 0) // else it is hidden
                m_view->setColumnWidth(column, qRound(text * m_digit / before) + CellMargin);
        }
    }

    QTableView *m_view;
    int m_rowMargin;
    qreal m_digit;
};

} // namespace

void wearLook(const Look &look)
{
    if (colors().isEmpty()) {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        chooseStandIns();
    }
    const QString table = look.light ? QStringLiteral("light.json") : QStringLiteral("dark.json");
    qApp->setProperty(ColorsProperty, QJsonDocument::fromJson(resource(table)).object());
    qApp->setProperty(LightProperty, look.light);
    qApp->setProperty(SizeProperty, look.textPercent);
    QApplication::setPalette(palette());
    setTextSize(look.textPercent);
    const QString before = qApp->styleSheet();
    const QString now = sheet();
    qApp->setStyleSheet(now);
    for (QWidget *widget : QApplication::allWidgets()) {
        if (!before.isEmpty() && widget->styleSheet() == before)
            widget->setStyleSheet(now);
        if (widget->property(FixedProperty).toBool())
            wearFixedFont(widget);
    }
}

Look wornLook()
{
    Look look;
    look.light = qApp->property(LightProperty).toBool();
    if (qApp->property(SizeProperty).isValid())
        look.textPercent = qApp->property(SizeProperty).toInt();
    return look;
}

QColor lookColor(const char *name)
{
    return QColor(colors().value(QLatin1String(name)).toString());
}

void wearFixedFont(QWidget *widget)
{
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPointSizeF(QApplication::font().pointSizeF());
    widget->setFont(font);
    widget->setProperty(FixedProperty, true);
}

void sizeByText(QTableView *view, const QVector<int> &digits, int rowMargin)
{
    for (int column = 0; column < digits.size(); ++column)
        view->setColumnWidth(column, qRound(digits.at(column) * digitOf(*view)) + CellMargin);
    new TableSizes(view, rowMargin);
}

} // namespace devhost
