#include "proof/answers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>

namespace proof {

void answerOpenBox()
{
    QWidget *modal = QApplication::activeModalWidget();
    if (auto *box = qobject_cast<QMessageBox *>(modal)) {
        QAbstractButton *retry = box->button(QMessageBox::Retry);
        QAbstractButton *answer = retry ? retry : box->buttons().value(0);
        if (answer)
            answer->click();
    } else if (modal) {
        auto *close = modal->findChild<QAbstractButton *>(QStringLiteral("close_pushButton"));
        if (close && close->isEnabled())
            close->click();
        else if (!close)
            QTest::keyClick(modal, Qt::Key_Escape);
    }
}

QStringList doubledBoxes()
{
    QStringList texts;
    QStringList problems;
    for (const QWidget *window : QApplication::topLevelWidgets()) {
        const auto *box = qobject_cast<const QMessageBox *>(window);
        if (!box || !box->isVisible())
            continue;
        const QString text = box->windowTitle() + QLatin1String(": ") + box->text();
        if (texts.contains(text))
            problems.append(QStringLiteral("the same box is open twice: ") + text);
        texts.append(text);
    }
    return problems;
}

} // namespace proof
