# SPDX-License-Identifier: MIT
# Defines GenApi::GenApi: the layer of this project, or the reference implementation
# below GENICAM_ROOT_V3_4 when PARAMTERWND_GENAPI is "reference".
if(TARGET GenApi::GenApi)
    set(GenApi_FOUND TRUE)
    return()
endif()

find_path(GenApi_INCLUDE_DIR GenApi/GenApi.h
          HINTS ${GENICAM_ROOT_V3_4} ENV GENICAM_ROOT_V3_4 PATH_SUFFIXES library/CPP/include include)
set(GenApi_LIBRARIES "")
foreach(part GenApi GCBase)
    file(GLOB candidates $ENV{GENICAM_ROOT_V3_4}/bin/*/lib${part}_*_v3_4.so
                         ${GENICAM_ROOT_V3_4}/bin/*/lib${part}_*_v3_4.so)
    list(APPEND GenApi_LIBRARIES ${candidates})
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(GenApi REQUIRED_VARS GenApi_INCLUDE_DIR GenApi_LIBRARIES)
if(GenApi_FOUND)
    add_library(GenApi::GenApi INTERFACE IMPORTED)
    target_include_directories(GenApi::GenApi SYSTEM INTERFACE ${GenApi_INCLUDE_DIR})
    target_link_libraries(GenApi::GenApi INTERFACE ${GenApi_LIBRARIES})
endif()
