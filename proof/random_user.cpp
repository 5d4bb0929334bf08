#include "proof/random_user.h"

#include "proof/expected_messages.h"
#include "proof/level_hand.h"
#include "proof/snapshot_content.h"
#include "proof/station.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTabBar>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

namespace proof {

namespace {

constexpr int TraceLength = 120;
constexpr int ActsOfAWarning = 20; // until it is told and answered

bool isLevel(const QWidget *widget)
{
    return widget->inherits("VmDspGain") || widget->inherits("VmDial");
}

bool isUsable(const QWidget *widget)
{
    return widget->isVisible() && widget->isEnabled()
        && (qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QComboBox *>(widget)
            || qobject_cast<const QAbstractSpinBox *>(widget) || qobject_cast<const QTabBar *>(widget)
            || qobject_cast<const QTableWidget *>(widget) || isLevel(widget)
            || (qobject_cast<const QLineEdit *>(widget)
                && !static_cast<const QLineEdit *>(widget)->isReadOnly()
                && !qobject_cast<const QAbstractSpinBox *>(widget->parentWidget())));
}

/// Without the faders and dials, which are most of them, where @p withLevels is false.
QVector<QWidget *> usable(const QWidget *window, bool withLevels)
{
    QVector<QWidget *> found;
    for (QWidget *widget : window->findChildren<QWidget *>()) {
        if (widget->window() == window && isUsable(widget) && (withLevels || !isLevel(widget)))
            found.append(widget);
    }
    return found;
}

void click(QWidget *widget)
{
    // A check box reacts where its mark and text are, which is not its middle.
    QTest::mouseClick(widget, Qt::LeftButton, {}, {qMin(8, widget->width() / 2), widget->height() / 2});
}

QString nameOf(const QWidget *widget)
{
    return widget->objectName().isEmpty() ? QString::fromLatin1(widget->metaObject()->className())
                                          : widget->objectName();
}

} // namespace

RandomUser::RandomUser(Station *station, quint32 seed, const QString &ownCue)
    : m_station(station)
    , m_seed(seed)
    , m_ownCue(ownCue)
{
}

void RandomUser::start(int pauseMs)
{
    m_pauseMs = pauseMs;
    m_running = true;
    goOn();
}

/// The next act is due before this one is done: a box that it opens must find its user.
void RandomUser::goOn()
{
    if (!m_running)
        return;
    QTimer::singleShot(m_pauseMs, this, &RandomUser::goOn);
    const bool mustWait = m_patient && m_station->isOpen() && !m_station->isLive();
    if (mustWait && !QApplication::activeModalWidget())
        return;
    // Each act has dice of its own, so that what an earlier one found possible does not change it.
    m_dice.seed(m_seed * 1000003U + quint32(++m_acts));
    act();
}

void RandomUser::note(const QString &what)
{
    m_trace.append(QStringLiteral("%1 %2").arg(m_acts).arg(what));
    if (m_trace.size() > TraceLength)
        m_trace.removeFirst();
}

void RandomUser::act()
{
    const int kind = m_dice.bounded(100);
    if (QWidget *modal = QApplication::activeModalWidget()) {
        useModal(modal);
        return;
    }
    if (m_acting)
        return; // the box that this act opened is answered and has still to go
    const QScopedValueRollback<bool> acting(m_acting, true);
    if (!m_station->isOpen()) {
        m_draft = QString();
        note(QStringLiteral("open the editor"));
        m_station->open();
        return;
    }
    const QList<QWidget *> windows = m_station->windows();
    if (kind < 12 || windows.isEmpty())
        useHost();
    else
        useWindow(kind < 55 ? windows.first() : windows.at(m_dice.bounded(windows.size())));
}

void RandomUser::useModal(QWidget *modal)
{
    if (auto *files = qobject_cast<QFileDialog *>(modal)) {
        const bool choose = m_dice.bounded(2) == 1;
        note(choose ? QStringLiteral("choose a recording") : QStringLiteral("leave the file dialog"));
        files->selectFile(m_ownCue);
        QTest::keyClick(files, choose ? Qt::Key_Return : Qt::Key_Escape);
        return;
    }
    QList<QAbstractButton *> buttons = modal->findChildren<QAbstractButton *>();
    if (auto *box = qobject_cast<QMessageBox *>(modal))
        buttons = box->buttons();
    QAbstractButton *button = buttons.isEmpty() ? nullptr : buttons.at(m_dice.bounded(buttons.size()));
    if (!button || !isUsable(button) || button->text().contains(QLatin1String("Details")))
        return;
    note(QStringLiteral("answer \"%1\" with %2").arg(modal->windowTitle(), button->text()));
    m_warnings += modal->windowTitle() == QLatin1String("Invalid entry") ? 1 : 0;
    button->click();
}

void RandomUser::applySnapshot()
{
    if (m_snapshot.isEmpty())
        takeSnapshot();
    QByteArray document = m_snapshot;
    if (m_dice.bounded(4) == 0 && !m_patient)
        document.truncate(m_dice.bounded(document.size() + 1));
    note(QStringLiteral("load a snapshot of %1 bytes").arg(document.size()));
    const bool isWhole = !document.isEmpty() && document == m_snapshot;
    const bool fits = m_station->plugin()->checkSnapshot(document);
    if (isWhole && !fits)
        m_station->ledger()->complain(QStringLiteral("a snapshot of this device is said not to fit it"));
    for (const auto &setting : fits ? contentOf(document).settings : QVector<QPair<QString, QJsonValue>>())
        m_station->ledger()->expect(setting.first, setting.second);
    m_station->plugin()->applySnapshot(document);
}

void RandomUser::takeSnapshot()
{
    note(QStringLiteral("take a snapshot"));
    m_station->plugin()->getSnapshot(&m_snapshot);
    for (const QString &problem : snapshotProblems(contentOf(m_snapshot), m_station->firmware()))
        m_station->ledger()->complain(problem);
}

void RandomUser::useHost()
{
    PlexoPlugin *plugin = m_station->plugin();
    switch (m_dice.bounded(12)) {
    case 0:
        takeSnapshot();
        break;
    case 1:
        applySnapshot();
        break;
    case 2:
        note(QStringLiteral("recall a preset"));
        plugin->loadPreset(m_dice.bounded(9));
        break;
    case 3:
        note(QStringLiteral("store a preset"));
        plugin->savePreset(m_dice.bounded(9));
        break;
    case 4:
        note(QStringLiteral("the device's data changed"));
        plugin->deviceDataChanged();
        break;
    case 5:
        note(QStringLiteral("resize the editor"));
        m_station->editor()->resize(m_dice.bounded(700, 1400), m_dice.bounded(500, 1000));
        break;
    case 6:
        note(QStringLiteral("close and open the editor"));
        if (m_dice.bounded(100) < m_recklessness)
            m_station->close();
        break;
    default:
        note(QStringLiteral("open a block"));
        m_station->openBlock(m_dice.bounded(7));
    }
}

void RandomUser::useWindow(QWidget *window)
{
    const QVector<QWidget *> widgets = usable(window, m_dice.bounded(3) > 0);
    const int choice = m_dice.bounded(1000);
    if (window != m_station->editor() && choice < 15) {
        note(QStringLiteral("close ") + window->windowTitle());
        QTest::keyClick(window, Qt::Key_Escape);
    } else if (!widgets.isEmpty()) {
        window->activateWindow();
        auto *tabs = window->findChild<QTabBar *>();
        QWidget *widget = tabs && choice < 100 ? tabs : widgets.at(choice % widgets.size());
        if (!isSpared(widget))
            use(widget);
    }
}

/// Whatever ends the session or takes long is done seldom, or little else would be.
bool RandomUser::isSpared(const QWidget *widget)
{
    const QString name = widget->objectName();
    const bool isGrave = name.contains(QLatin1String("reboot"))
        || name.contains(QLatin1String("factory_reset")) || name.startsWith(QLatin1String("close_"))
        || name.contains(QLatin1String("refresh")) || name.contains(QLatin1String("_def_"))
        || name.contains(QLatin1String("_load_"));
    return isGrave && m_dice.bounded(100) >= m_recklessness;
}

void RandomUser::use(QWidget *widget)
{
    note(QStringLiteral("use %1 of %2").arg(nameOf(widget), widget->window()->windowTitle()));
    if (auto *button = qobject_cast<QAbstractButton *>(widget))
        useButton(button);
    else if (auto *box = qobject_cast<QComboBox *>(widget))
        useChoice(box);
    else if (isLevel(widget))
        useLevel(widget);
    else if (auto *tabs = qobject_cast<QTabBar *>(widget))
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(m_dice.bounded(tabs->count())).center());
    else if (auto *table = qobject_cast<QTableWidget *>(widget))
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, {12, 12 + m_dice.bounded(200)});
    else
        useField(widget);
}

void RandomUser::useButton(QAbstractButton *button)
{
    const QString path = expected::pathOf(button);
    const bool leadsToUpload = button->objectName().contains(QLatin1String("_def_"))
        || button->objectName().contains(QLatin1String("_load_"));
    if (leadsToUpload)
        m_station->ledger()->forgive(); // what waits is dropped for it
    const bool was = button->isChecked();
    if (path.isEmpty()) {
        click(button);
        return;
    }
    // Before the click: the editor may be gone after it.
    const bool willBe = button->isCheckable() ? !was : true;
    m_station->ledger()->expect(path, willBe);
    click(button);
}

void RandomUser::useChoice(QComboBox *box)
{
    const int index = box->currentIndex();
    const int next = index + (m_dice.bounded(2) == 0 ? 1 : -1);
    if (next < 0 || next >= box->count())
        return;
    const QString path = expected::pathOf(box);
    if (!path.isEmpty())
        m_station->ledger()->expect(path, expected::word(box->objectName(), next));
    QTest::keyClick(box, next > index ? Qt::Key_Down : Qt::Key_Up);
}

void RandomUser::useLevel(QWidget *widget)
{
    const QPointer<QWidget> alive(widget);
    const QString path = expected::levelPath(widget);
    const double before = levelOf(widget);
    if (m_dice.bounded(7) == 6) {
        if (path.isEmpty()) // each move of a drag is a message of its own
            drag(widget);
        return;
    }
    const QString surprise = changeLevel(widget, &m_dice);
    if (!surprise.isEmpty())
        m_station->ledger()->complain(surprise);
    const double after = alive ? levelOf(widget) : before;
    if (!path.isEmpty() && after != before)
        m_station->ledger()->expect(path, qRound(after));
}

void RandomUser::drag(QWidget *widget)
{
    const QPoint from = widget->rect().center();
    const QPoint to = from + QPoint(0, m_dice.bounded(-60, 60));
    const QPointer<QWidget> alive(widget);
    QTest::mousePress(widget, Qt::LeftButton, {}, from);
    for (int step = 1; alive && step <= 4; ++step)
        QTest::mouseMove(widget, from + (to - from) * step / 4);
    if (alive)
        QTest::mouseRelease(widget, Qt::LeftButton, {}, to);
}

/// Whoever enters what no port can be is told so: at once, unless what is told is still an earlier entry.
void RandomUser::enterPort(QWidget *field)
{
    const QPointer<QWidget> alive(field);
    const QString text = field->property("text").toString();
    const int port = text.toInt();
    const int before = m_warnings;
    const bool isCalm = m_patient && m_acts - m_lastEntry > ActsOfAWarning;
    QTest::keyClick(field, Qt::Key_Return);
    const bool isWarned = m_warnings > before;
    if (alive && isCalm && isWarned != (port < 1 || port > 65535))
        m_station->ledger()->complain(
            QStringLiteral("the port \"%1\" is entered %2 a warning")
                .arg(text, isWarned ? QStringLiteral("with") : QStringLiteral("without")));
}

void RandomUser::useField(QWidget *field)
{
    static const QStringList Texts{QStringLiteral("239.255.77.9"), QStringLiteral("10.1.2.3"),
                                   QStringLiteral("47755"),        QStringLiteral("-12"),
                                   QStringLiteral("Stage 2"),      QStringLiteral("0.0.0"),
                                   QStringLiteral("B\u00fcro"),    QStringLiteral("")};
    const QPointer<QWidget> alive(field);
    const QString &text = Texts.at(m_dice.bounded(Texts.size()));
    // A fader's entry must not report its value later, when the focus happens to leave it.
    QWidget *fader = field->parentWidget()->inherits("VmDspGain") ? field->parentWidget() : nullptr;
    const int end = fader ? 1 : m_dice.bounded(3);
    const double before = fader ? fader->property("gain").toDouble() : 0;
    const QString gain = fader ? expected::levelPath(fader) : QString();
    click(field);
    if (!alive)
        return;
    const bool isAddress = field->objectName().endsWith(QLatin1String("_lineEdit"));
    QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(field, Qt::Key_Delete);
    for (const QChar letter : text) {
        if (alive)
            QTest::sendKeyEvent(QTest::Click, field, Qt::Key_unknown, QString(letter), Qt::NoModifier);
    }
    if (field->objectName() == QLatin1String("bt_friendly_name_lineEdit"))
        m_draft = text;
    const bool isPort = field->objectName().endsWith(QLatin1String("_port_lineEdit"));
    if (alive && end == 1 && isPort)
        enterPort(field);
    else if (alive && end > 0)
        QTest::keyClick(field, end == 1 ? Qt::Key_Return : Qt::Key_Tab);
    m_lastEntry = isAddress ? m_acts : m_lastEntry;
    if (alive && !gain.isEmpty() && fader->property("gain") != before)
        m_station->ledger()->expect(gain, qRound(fader->property("gain").toDouble()));
}

} // namespace proof
