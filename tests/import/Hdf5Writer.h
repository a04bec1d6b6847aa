// HDF5 files that the tests write with the library itself.
#pragma once

#include <hdf5.h>

#include <string>
#include <vector>

/// A file to which attributes and datasets are added; it closes with the object.
class Hdf5Writer_cls {
public:
    explicit Hdf5Writer_cls(const std::string& path)
        : mFile(H5Fcreate(path.c_str(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)) {}
    ~Hdf5Writer_cls() { H5Fclose(mFile); }
    Hdf5Writer_cls(const Hdf5Writer_cls&) = delete;
    Hdf5Writer_cls& operator=(const Hdf5Writer_cls&) = delete;

    void Group(const std::string& name) {
        H5Gclose(H5Gcreate2(mFile, name.c_str(), H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT));
    }
    /// Of the group "Header", or of another object.
    template <class T>
    void Attribute(const std::string& name, hid_t type, const std::vector<T>& values,
                   const std::string& object = "Header") {
        const hsize_t size = values.size();
        const hid_t space = size == 1 ? H5Screate(H5S_SCALAR) : H5Screate_simple(1, &size, nullptr);
        const hid_t id = H5Acreate_by_name(mFile, object.c_str(), name.c_str(), type, space, H5P_DEFAULT,
                                           H5P_DEFAULT, H5P_DEFAULT);
        H5Awrite(id, type, values.data());
        H5Aclose(id);
        H5Sclose(space);
    }
    /// Stored as `stored`, which may have another order of bytes.
    template <class T>
    void Data(const std::string& name, hid_t memory, hid_t stored, hsize_t width,
              const std::vector<T>& values) {
        const hsize_t sizes[2] = {values.size() / width, width};
        const hid_t space = H5Screate_simple(width > 1 ? 2 : 1, sizes, nullptr);
        const hid_t id =
            H5Dcreate2(mFile, name.c_str(), stored, space, H5P_DEFAULT, H5P_DEFAULT, H5P_DEFAULT);
        H5Dwrite(id, memory, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
        H5Dclose(id);
        H5Sclose(space);
    }
    /// Of any dimensions (none: a scalar), with the groups above it; `fill`: what stands for no value.
    template <class T>
    void Data(const std::string& name, hid_t type, const std::vector<hsize_t>& sizes,
              const std::vector<T>& values, const T* pFill = nullptr) {
        const hid_t space = sizes.empty() ? H5Screate(H5S_SCALAR)
                                          : H5Screate_simple(int(sizes.size()), sizes.data(), nullptr);
        const hid_t links = H5Pcreate(H5P_LINK_CREATE);
        const hid_t list = H5Pcreate(H5P_DATASET_CREATE);
        H5Pset_create_intermediate_group(links, 1);
        if (pFill) H5Pset_fill_value(list, type, pFill);
        const hid_t id = H5Dcreate2(mFile, name.c_str(), type, space, links, list, H5P_DEFAULT);
        H5Dwrite(id, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values.data());
        H5Dclose(id);
        H5Pclose(list);
        H5Pclose(links);
        H5Sclose(space);
    }
    void Link(const std::string& from, const std::string& to) {
        H5Lcreate_hard(mFile, from.c_str(), mFile, to.c_str(), H5P_DEFAULT, H5P_DEFAULT);
    }
    /// Chunked, with room for rows that are never written.
    void Huge(const std::string& name, hsize_t rows) {
        const hsize_t sizes[2] = {rows, 3};
        const hsize_t chunk[2] = {1024, 3};
        const hid_t space = H5Screate_simple(2, sizes, nullptr);
        const hid_t list = H5Pcreate(H5P_DATASET_CREATE);
        H5Pset_chunk(list, 2, chunk);
        const hid_t id =
            H5Dcreate2(mFile, name.c_str(), H5T_NATIVE_FLOAT, space, H5P_DEFAULT, list, H5P_DEFAULT);
        H5Dclose(id);
        H5Pclose(list);
        H5Sclose(space);
    }
    void Header(const std::vector<int>& here, const std::vector<int>& total, int files) {
        Group("Header");
        Attribute("NumPart_ThisFile", H5T_NATIVE_INT, here);
        Attribute("NumPart_Total", H5T_NATIVE_INT, total);
        Attribute("NumFilesPerSnapshot", H5T_NATIVE_INT, std::vector<int>{files});
        Attribute("Time", H5T_NATIVE_DOUBLE, std::vector<double>{0.1});
        Attribute("BoxSize", H5T_NATIVE_DOUBLE, std::vector<double>{8.0});
    }

private:
    hid_t mFile;
};
