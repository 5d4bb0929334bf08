#pragma once

#include "devhost/faults.h"

#include <QDialog>
#include <QPointer>

class QComboBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;

namespace devhost {

class SimulatedDevice;

/// Lets a simulated device misbehave while it runs, and changes what is around it. It shows what is on, as
/// the device says it.
class FaultPanel : public QDialog
{
    Q_OBJECT

public:
    explicit FaultPanel(QWidget *window);

    /// Of whom it speaks from now on; null for none. Not owned.
    void setDevice(SimulatedDevice *device);
    SimulatedDevice *device() const { return m_device; }

private:
    QWidget *createNumbers(const QString &title, const QVector<FaultNumber> &faults);
    QWidget *createRefusals();
    QWidget *createTransfer();
    QWidget *createPresence();
    QWidget *createSurroundings();
    QWidget *createLevels();
    QWidget *createButtons();
    void addNumber(QFormLayout *form, const FaultNumber &fault);
    void addWords(QFormLayout *form, const QString &label, const QString &path,
                  const QVector<FaultWord> &words);
    void pushLevel(const QJsonValue &level);
    void order(const QString &path, const QJsonValue &value);
    void showState();
    void showChannels();

    QPointer<SimulatedDevice> m_device;
    QLabel *m_heading;
    QLabel *m_summary;
    QWidget *m_content;
    QHash<QString, QSpinBox *> m_numbers; ///< by path
    QHash<QString, QComboBox *> m_words; ///< by path
    QComboBox *m_refuse = nullptr;
    QComboBox *m_channel = nullptr;
    QPushButton *m_allWell = nullptr;
    QPushButton *m_startAgain = nullptr;
};

} // namespace devhost
