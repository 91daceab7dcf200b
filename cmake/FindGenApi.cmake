# SPDX-License-Identifier: MIT
# Defines GenApi::GenApi: the layer of this project, or the reference implementation
# below GENICAM_ROOT_V3_4 when PARAMTERWND_GENAPI is "reference".
if(TARGET GenApi::GenApi)
    set(GenApi_FOUND TRUE)
    return()
endif()

set(genapi_root "${GENICAM_ROOT_V3_4}")
if(NOT genapi_root)
    set(genapi_root "$ENV{GENICAM_ROOT_V3_4}")
endif()

# An installation has a folder of libraries for each architecture; only the target's can be linked.
math(EXPR genapi_bits "8 * ${CMAKE_SIZEOF_VOID_P}")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(arm|aarch64)")
    set(genapi_machine ARM)
    if(CMAKE_LIBRARY_ARCHITECTURE MATCHES "hf$")
        set(genapi_machine ARMhf)
    endif()
elseif(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|amd64|i[3-6]86)$")
    set(genapi_machine i86)
    if(genapi_bits EQUAL 64)
        set(genapi_machine x64)
    endif()
else()
    set(genapi_machine ${CMAKE_SYSTEM_PROCESSOR})
endif()
set(genapi_folder "${genapi_root}/bin/Linux${genapi_bits}_${genapi_machine}")

find_path(GenApi_INCLUDE_DIR GenApi/GenApi.h HINTS ${genapi_root} PATH_SUFFIXES library/CPP/include include)

# The panel calls the first two; the linker wants to see what these need.
set(GenApi_LIBRARIES "")
foreach(part GenApi GCBase Log MathParser XmlParser NodeMapData)
    file(GLOB candidates "${genapi_folder}/lib${part}_*_v3_4.so") # the star is the compiler
    list(SORT candidates COMPARE NATURAL)
    list(POP_BACK candidates GenApi_${part}_LIBRARY)
    list(APPEND GenApi_LIBRARIES ${GenApi_${part}_LIBRARY})
endforeach()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(
    GenApi REQUIRED_VARS GenApi_INCLUDE_DIR GenApi_GenApi_LIBRARY GenApi_GCBase_LIBRARY
    REASON_FAILURE_MESSAGE "The libraries are looked for in ${genapi_folder}.")
if(GenApi_FOUND)
    add_library(GenApi::GenApi INTERFACE IMPORTED)
    target_include_directories(GenApi::GenApi SYSTEM INTERFACE ${GenApi_INCLUDE_DIR})
    target_link_libraries(GenApi::GenApi INTERFACE ${GenApi_LIBRARIES})
endif()
