// What the clock asks of the data that it plays. The hub answers.
#pragma once

class TimeHost_cls {
public:
    virtual ~TimeHost_cls() = default;

    /// MB a loaded snapshot; -1 if none is loaded.
    virtual int GetAverageMemoryMB() const = 0;
    virtual int GetMemoryLimitMB() const = 0;
};
