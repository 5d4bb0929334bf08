#include "devhost/fault_panel.h"
#include "devhost/simulated_device.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTest>

using namespace devhost;

/// Uses the panel on a simulated device in a process of its own.
class FaultPanelTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void changesRunningDevice();
    void saysWhatIsNotDone();

private:
    void press(const char *button) const
    {
        QTest::mouseClick(m_panel->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
    }
    void enter(const char *field, int value) const
    {
        m_panel->findChild<QSpinBox *>(QLatin1String(field))->setValue(value);
    }

    QScopedPointer<SimulatedDevice> m_device;
    QScopedPointer<FaultPanel> m_panel;
};

void FaultPanelTest::init()
{
    m_device.reset(new SimulatedDevice(QStringLiteral("KBX-0001"), QStringLiteral(SIMULATOR),
                                       {QStringLiteral("--address"), QStringLiteral("127.0.0.11"),
                                        QStringLiteral("--port"), QStringLiteral("0")}));
    m_panel.reset(new FaultPanel(nullptr));
    m_panel->setDevice(m_device.data());
    m_panel->show();
    m_device->start();
    QTRY_VERIFY(!m_device->channels().isEmpty());
    QCOMPARE(m_device->summary(), QString());
}

void FaultPanelTest::cleanup()
{
    m_panel.reset();
    m_device.reset();
}

void FaultPanelTest::changesRunningDevice()
{
    enter("latency", 400);
    enter("drop", 25);
    auto *refuse = m_panel->findChild<QComboBox *>(QStringLiteral("refuse"));
    refuse->setEditText(QStringLiteral("set:/a \"b\""));
    QTest::keyClick(refuse, Qt::Key_Return);
    m_panel->findChild<QComboBox *>(QStringLiteral("channel"))->setCurrentText(QStringLiteral("dante_rx/2"));
    press("Push");
    press("Vanish Now");
    QTRY_COMPARE(
        m_device->summary(),
        QStringLiteral(
            "vanished, late by 400 ms, lost 25 %, refuses set:/a \"b\", level of dante_rx/2 at -6 dB"));
    QCOMPARE(m_device->value(QStringLiteral("/levels/dante_rx/2")), QJsonValue(-6));
    press("allWell");
    QTRY_COMPARE(m_device->summary(), QString());
    QTRY_COMPARE(m_panel->findChild<QSpinBox *>(QStringLiteral("latency"))->value(), 0);
    QCOMPARE(refuse->currentText(), QString());
}

void FaultPanelTest::saysWhatIsNotDone()
{
    QSignalSpy refused(m_device.data(), &SimulatedDevice::refused);
    QSignalSpy failed(m_device.data(), &SimulatedDevice::failed);
    const auto *again = m_panel->findChild<QPushButton *>(QStringLiteral("startAgain"));
    m_device->order(QStringLiteral("/faults/drop"), 7);
    QVERIFY(refused.wait());
    QVERIFY(refused.takeFirst().first().toString().contains(QStringLiteral("/faults/drop")));
    QCOMPARE(m_device->summary(), QString());
    QVERIFY(!again->isVisible());

    QProcess::execute(
        QStringLiteral("pkill"),
        {QStringLiteral("-KILL"), QStringLiteral("-P"), QString::number(QCoreApplication::applicationPid())});
    enter("latency", 300); // it is not known yet that nobody hears this
    QTRY_COMPARE(failed.count(), 1);
    QTRY_VERIFY(again->isVisible()
                && !m_panel->findChild<QSpinBox *>(QStringLiteral("latency"))->isEnabled());
    m_device->order(QStringLiteral("/present"), false);
    QVERIFY(refused.value(0).value(0).toString().contains(QStringLiteral("Start Again")));
    press("startAgain");
    QTRY_VERIFY(m_device->isRunning() && !m_device->channels().isEmpty());
    QTRY_VERIFY(!again->isVisible());
}

QTEST_MAIN(FaultPanelTest)
#include "tst_fault_panel.moc"
