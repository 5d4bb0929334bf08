#pragma once

#include <QString>

class QRandomGenerator;
class QWidget;

namespace proof {

/// One gesture at a fader or dial: a key, the wheel or a double-click. What it made of the level that a user
/// would not expect; empty when all is well.
QString changeLevel(QWidget *level, QRandomGenerator *dice);

/// What the control stands at, in dB.
double levelOf(const QWidget *level);

} // namespace proof
