// Editing one dimension of an animated setting by hand.
#pragma once

#include <memory>
#include <vector>

class ParamGroup_cls;
class Parameters_cls;

/// A gesture moves the curves at once, without steps, so that everything shows it; its end puts them back
/// and leaves the change as one step.
class ParamEdit_cls {
public:
    explicit ParamEdit_cls(ParamGroup_cls* pGroup);
    ~ParamEdit_cls();

    /// The value at the current time.
    double GetValue(int dimension) const;
    /// A key with this value at the current time; a constant takes it for the whole film.
    void SetValue(int dimension, double value, bool bFinal);

private:
    void SetKeys(int dimension, double value);

    ParamGroup_cls* mpCGroup;
    std::vector<std::unique_ptr<Parameters_cls>> mVBefore; ///< while a gesture is under way
};
