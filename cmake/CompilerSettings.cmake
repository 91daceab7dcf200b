# SPDX-License-Identifier: MIT
# Compiler settings of every target of the project.
set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE_PROGRAM})
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wnon-virtual-dtor -Woverloaded-virtual -Wshadow=local)
if(PARAMTERWND_WERROR)
    add_compile_options(-Werror)
endif()
if(PARAMTERWND_SANITIZE)
    add_compile_options(-fsanitize=${PARAMTERWND_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${PARAMTERWND_SANITIZE})
endif()
if(PARAMTERWND_COVERAGE)
    add_compile_options(--coverage)
    add_link_options(--coverage)
endif()

# Qt without its keyword macros (GLib has a field called signals) and without silent ASCII conversions.
add_compile_definitions(QT_NO_KEYWORDS QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_DEPRECATED_WARNINGS
                        QT_DISABLE_DEPRECATED_BEFORE=0x050e00)
