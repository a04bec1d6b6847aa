// A file of HDF5 in a few calls: handles are closed, attributes become ours.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

class Hdf5File_cls {
public:
    using Handle = int64_t; // the library's hid_t

    /// Throws ImportError_cls, as all calls do.
    explicit Hdf5File_cls(const std::string& path);
    ~Hdf5File_cls();
    Hdf5File_cls(const Hdf5File_cls&) = delete;
    Hdf5File_cls& operator=(const Hdf5File_cls&) = delete;
    static bool IsHdf5(const std::string& path);

    bool Has(const std::string& name) const;
    bool IsGroup(const std::string& name) const;
    /// What stands in a group, by the letters of the names.
    std::vector<std::string> ListGroup(const std::string& name) const;
    /// Numbers of an attribute; empty: there is none.
    std::vector<double> ReadAttribute(const std::string& group, const std::string& name) const;
    /// Words of an attribute; empty: there is none, or it holds something else.
    std::vector<std::string> ReadWords(const std::string& group, const std::string& name) const;

    /// A dataset of `rows` rows of `width` numbers each. Four bytes come bit for bit, eight rounded.
    void ReadFloats(const std::string& name, size_t rows, size_t width, float* pOut) const;
    /// Is there a dataset of this size? Throws where ReadFloats would, before its memory is taken.
    void Check(const std::string& name, size_t rows, size_t width) const;
    void ReadIntegers(const std::string& name, size_t rows, long long* pOut) const;

    Handle GetHandle() const { return mFile; }
    [[noreturn]] void Fail(const std::string& text) const;

private:
    std::string mPath;
    Handle mFile = -1;
};
