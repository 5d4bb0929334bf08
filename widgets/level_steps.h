#pragma once

#include <Qt>

class QKeyEvent;
class QWheelEvent;

namespace vm {

/// dB by which a key press moves a level: arrows 1, with Shift 3, Page keys 6; negative downwards. 0 for a
/// key that is no step.
double keyStep(const QKeyEvent &event);

/// True for a key press that begins a number: a digit, a sign or a decimal separator.
bool startsNumber(const QKeyEvent &event);

/// Turns wheel deltas into whole dB. Deltas smaller than a notch, as trackpads send, add up.
class WheelSteps
{
public:
    /// dB to move now; 0 while the deltas do not make a notch.
    double take(const QWheelEvent &event);
    void reset() { m_rest = 0; }

    /// The part of a wheel event that moves a level, in eighths of a degree: 0 for sideways scrolling.
    static int delta(const QWheelEvent &event);

private:
    int m_rest = 0; // eighths of a degree
};

} // namespace vm
