#pragma once

#include "devhost/message_recorder.h"
#include "devhost/tour/guide.h"
#include "devhost/tour/tour.h"

#include <QTextStream>

namespace devhost {
struct Options;
}

namespace devhost::tour {

/// A whole tour through the editor of the first device, with everything it writes.
class TourRun : public QObject
{
    Q_OBJECT

public:
    /// Neither is owned; everything is written into the tour folder of @p options.
    TourRun(Host *host, HostWindow *window, const Options &options);

    /// To be called before the host sends its first message. The answer is empty, or a sentence on what
    /// failed.
    QString start();

signals:
    void finished(bool success);

private:
    QString m_folder;
    MessageRecorder m_recorder;
    Guide m_guide;
    QTextStream m_out;
    Tour m_tour;
};

} // namespace devhost::tour
