#pragma once

/// Makes faders, dials and meters readable for screen readers while it lives: role, value text such as
/// "-12 dB", range, and setting a level. Each such widget holds the shared one.
class AccessibleLevels
{
public:
    AccessibleLevels();
    ~AccessibleLevels();
    AccessibleLevels(const AccessibleLevels &) = delete;
    AccessibleLevels &operator=(const AccessibleLevels &) = delete;
};
