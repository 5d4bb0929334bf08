#include "devhost/fault_panel.h"

#include "devhost/simulated_device.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSpinBox>

#include <cmath>

namespace devhost {

namespace {

constexpr int MostMs = 60000;
constexpr int MostRequests = 10000;
constexpr int LongestPattern = 200;
const QLatin1String RefusePath("/faults/refuse");
const QLatin1String PresentPath("/present");

QPushButton *addButton(QBoxLayout *row, const QString &text, const QString &tip)
{
    auto *button = new QPushButton(text);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    button->setObjectName(QString(text).remove(QLatin1Char('&')));
    row->addWidget(button);
    return button;
}

} // namespace

FaultPanel::FaultPanel(QWidget *window)
    : QDialog(window)
    , m_heading(new QLabel)
    , m_summary(new QLabel)
    , m_content(new QWidget)
{
    setObjectName(QStringLiteral("faultPanel"));
    setWindowTitle(tr("Simulated Faults"));
    m_heading->setTextFormat(Qt::PlainText);
    m_heading->setProperty("role", QStringLiteral("heading"));
    m_summary->setTextFormat(Qt::PlainText);
    m_summary->setWordWrap(true);
    m_summary->setProperty("role", QStringLiteral("caption"));
    auto *grid = new QGridLayout(m_content);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(createNumbers(tr("Replies"), replyFaults()), 0, 0, 3, 1);
    grid->addWidget(createRefusals(), 0, 1);
    grid->addWidget(createTransfer(), 1, 1, 2, 1);
    grid->addWidget(createPresence(), 3, 0, 2, 1);
    grid->addWidget(createSurroundings(), 3, 1);
    grid->addWidget(createLevels(), 4, 1);
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_heading);
    column->addWidget(m_summary);
    column->addWidget(m_content);
    column->addWidget(createButtons());
    setDevice(nullptr);
}

void FaultPanel::addNumber(QFormLayout *form, const FaultNumber &fault)
{
    auto *field = new QSpinBox;
    const bool percent = fault.unit == FaultNumber::Percent;
    const int most = fault.unit == FaultNumber::Requests ? MostRequests : MostMs;
    field->setRange(0, percent ? 100 : most);
    field->setSingleStep(fault.unit == FaultNumber::Ms ? 100 : 5);
    const QString units[] = {tr(" ms"), tr(" %"), tr(" requests")};
    field->setSuffix(units[fault.unit]);
    field->setKeyboardTracking(false);
    field->setToolTip(tr(fault.tip));
    field->setObjectName(QLatin1String(fault.name));
    const QString path = QStringLiteral("/faults/") + QLatin1String(fault.name);
    connect(field, QOverload<int>::of(&QSpinBox::valueChanged), this, [this, path, percent](int value) {
        order(path, percent ? QJsonValue(value / 100.0) : QJsonValue(value));
    });
    form->addRow(tr(fault.label), field);
    form->labelForField(field)->setToolTip(field->toolTip());
    m_numbers.insert(path, field);
}

QWidget *FaultPanel::createNumbers(const QString &title, const QVector<FaultNumber> &faults)
{
    auto *group = new QGroupBox(title);
    auto *form = new QFormLayout(group);
    for (const FaultNumber &fault : faults)
        addNumber(form, fault);
    return group;
}

QWidget *FaultPanel::createRefusals()
{
    auto *group = new QGroupBox(tr("Refusals"));
    auto *form = new QFormLayout(group);
    m_refuse = new QComboBox;
    m_refuse->setObjectName(QStringLiteral("refuse"));
    m_refuse->setEditable(true);
    m_refuse->setInsertPolicy(QComboBox::NoInsert);
    m_refuse->addItems({QString(), QStringLiteral("set:*"), QStringLiteral("set:/preset/*"),
                        QStringLiteral("set:/system/*"), QStringLiteral("/status/*")});
    m_refuse->setToolTip(tr("Requests for paths that fit are refused: * is any characters, ? is one; "
                            "set: in front refuses changes only"));
    m_refuse->lineEdit()->setMaxLength(LongestPattern);
    const auto apply = [this] { order(RefusePath, m_refuse->currentText()); };
    connect(m_refuse->lineEdit(), &QLineEdit::editingFinished, this, apply);
    connect(m_refuse, QOverload<int>::of(&QComboBox::activated), this, apply);
    form->addRow(tr("Refuse"), m_refuse);
    return group;
}

void FaultPanel::addWords(QFormLayout *form, const QString &label, const QString &path,
                          const QVector<FaultWord> &words)
{
    auto *box = new QComboBox;
    for (const FaultWord &word : words)
        box->addItem(tr(word.label), QString(QLatin1String(word.word)));
    connect(box, QOverload<int>::of(&QComboBox::activated), this,
            [this, box, path] { order(path, box->currentData().toString()); });
    form->addRow(label, box);
    m_words.insert(path, box);
}

QWidget *FaultPanel::createTransfer()
{
    QWidget *group = createNumbers(tr("Upload of voice cues"), transferFaults());
    addWords(static_cast<QFormLayout *>(group->layout()), tr("Fault"), QStringLiteral("/faults/tftp-fault"),
             transferWords());
    return group;
}

QWidget *FaultPanel::createPresence()
{
    QWidget *group = createNumbers(tr("Presence"), presenceFaults());
    for (QSpinBox *field : group->findChildren<QSpinBox *>())
        field->setSpecialValueText(tr("never"));
    auto *row = new QHBoxLayout;
    connect(addButton(row, tr("&Vanish Now"), tr("Silent from now on: no replies, announcements or levels")),
            &QPushButton::clicked, this, [this] { order(PresentPath, false); });
    connect(addButton(row, tr("&Return Now"), tr("There again, as after a network cable was put back")),
            &QPushButton::clicked, this, [this] { order(PresentPath, true); });
    static_cast<QFormLayout *>(group->layout())->addRow(row);
    return group;
}

QWidget *FaultPanel::createSurroundings()
{
    auto *group = new QGroupBox(tr("Around it"));
    auto *form = new QFormLayout(group);
    addWords(form, tr("Phone"), QStringLiteral("/phone"), phoneWords());
    addWords(form, tr("USB"), QStringLiteral("/usb"), usbWords());
    return group;
}

QWidget *FaultPanel::createLevels()
{
    auto *group = new QGroupBox(tr("Levels"));
    auto *form = new QFormLayout(group);
    m_channel = new QComboBox;
    m_channel->setObjectName(QStringLiteral("channel"));
    form->addRow(tr("Channel"), m_channel);
    auto *level = new QSpinBox;
    level->setRange(-100, 20);
    level->setValue(-6);
    level->setSuffix(tr(" dB"));
    form->addRow(tr("Level"), level);
    auto *row = new QHBoxLayout;
    connect(addButton(row, tr("&Push"), tr("The channel shows this level, whatever it measures")),
            &QPushButton::clicked, this, [this, level] { pushLevel(level->value()); });
    connect(addButton(row, tr("R&elease"), tr("The channel shows again what it measures")),
            &QPushButton::clicked, this, [this] { pushLevel(QJsonValue()); });
    connect(addButton(row, tr("Cl&ip"), tr("+3 dB for a moment")), &QPushButton::clicked, this,
            [this] { order(QStringLiteral("/clip"), m_channel->currentText()); });
    form->addRow(row);
    return group;
}

QWidget *FaultPanel::createButtons()
{
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    m_allWell = buttons->addButton(tr("&All Well"), QDialogButtonBox::ResetRole);
    m_allWell->setObjectName(QStringLiteral("allWell"));
    m_allWell->setToolTip(tr("Turn off everything that is on"));
    m_startAgain = buttons->addButton(tr("&Start Again"), QDialogButtonBox::ActionRole);
    m_startAgain->setObjectName(QStringLiteral("startAgain"));
    connect(m_allWell, &QPushButton::clicked, this, [this] { m_device->orderAllWell(); });
    connect(m_startAgain, &QPushButton::clicked, this, [this] { m_device->start(); });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::hide);
    for (QAbstractButton *button : buttons->buttons())
        static_cast<QPushButton *>(button)->setAutoDefault(false);
    return buttons;
}

void FaultPanel::pushLevel(const QJsonValue &level)
{
    order(QStringLiteral("/levels/") + m_channel->currentText(), level);
}

void FaultPanel::order(const QString &path, const QJsonValue &value)
{
    if (m_device && m_device->value(path) != value)
        m_device->order(path, value);
}

void FaultPanel::setDevice(SimulatedDevice *device)
{
    if (m_device)
        m_device->disconnect(this);
    m_device = device;
    if (device)
        connect(device, &SimulatedDevice::changed, this, &FaultPanel::showState);
    showState();
}

void FaultPanel::showState()
{
    const bool running = m_device && m_device->isRunning();
    m_content->setEnabled(running);
    m_allWell->setEnabled(running);
    m_startAgain->setVisible(m_device && !running);
    m_heading->setText(m_device ? m_device->name() : tr("No simulated device is chosen in the list"));
    const QString summary = m_device ? m_device->summary() : QString();
    m_summary->setText(summary.isEmpty() ? tr("Nothing is on.") : tr("On: %1").arg(summary));
    if (m_device && !running)
        m_summary->setText(tr("Does not run."));
    if (!running)
        return;
    for (auto it = m_numbers.cbegin(); it != m_numbers.cend(); ++it) {
        const QSignalBlocker blocker(it.value());
        const bool percent = it.value()->maximum() == 100;
        it.value()->setValue(int(std::lround(m_device->value(it.key()).toDouble() * (percent ? 100 : 1))));
    }
    for (auto it = m_words.cbegin(); it != m_words.cend(); ++it)
        it.value()->setCurrentIndex(qMax(0, it.value()->findData(m_device->value(it.key()).toString())));
    const QSignalBlocker blocker(m_refuse->lineEdit());
    if (!m_refuse->hasFocus())
        m_refuse->setCurrentText(m_device->value(RefusePath).toString());
    showChannels();
}

void FaultPanel::showChannels()
{
    const QStringList channels = m_device->channels();
    if (m_channel->count() == channels.size())
        return;
    m_channel->clear();
    m_channel->addItems(channels);
}

} // namespace devhost
