// What the clock asks of the data that it plays. The hub answers.
#pragma once

class TimeHost_cls {
public:
    virtual ~TimeHost_cls() = default;

    /// MB a loaded snapshot; -1 if none is loaded.
    virtual int GetAverageMemoryMB() const = 0;
    virtual int GetMemoryLimitMB() const = 0;
    /// Can the snapshot, and with a fraction the way to the next one, be shown?
    virtual bool IsTheIndexReady(int index, double frac) const = 0;
    virtual bool IsTheIndexLoaded(int index) const = 0;
};
