# Finds OpenCV's core module alone: Debian's libopencv-core-dev has header and library but no CMake package file.
# Defines the imported target OpenCVCore::OpenCVCore; its headers are system headers, because they warn under C++20.
find_path(OpenCVCore_INCLUDE_DIR opencv2/core/persistence.hpp PATH_SUFFIXES opencv4)
find_library(OpenCVCore_LIBRARY opencv_core)

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(OpenCVCore REQUIRED_VARS OpenCVCore_LIBRARY OpenCVCore_INCLUDE_DIR)

if(OpenCVCore_FOUND AND NOT TARGET OpenCVCore::OpenCVCore)
    add_library(OpenCVCore::OpenCVCore UNKNOWN IMPORTED)
    set_target_properties(OpenCVCore::OpenCVCore PROPERTIES
        IMPORTED_LOCATION "${OpenCVCore_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${OpenCVCore_INCLUDE_DIR}")
endif()
mark_as_advanced(OpenCVCore_INCLUDE_DIR OpenCVCore_LIBRARY)
