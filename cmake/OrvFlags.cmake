# Use ccache if installed, in an IDE as well as in the scripts.
if(NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(ORV_CCACHE ccache)
    if(ORV_CCACHE)
        set(CMAKE_CXX_COMPILER_LAUNCHER ${ORV_CCACHE})
    endif()
endif()

# Flags shared by every target of the project.
add_library(orv_flags INTERFACE)
target_compile_features(orv_flags INTERFACE cxx_std_20)
target_compile_options(
    orv_flags
    INTERFACE -Wall
              -Wextra
              -Wpedantic
              -Wshadow
              -Wold-style-cast
              -Wnon-virtual-dtor
              -Woverloaded-virtual
              $<$<BOOL:${ORV_WERROR}>:-Werror>)
target_compile_definitions(
    orv_flags INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_NO_FOREACH
                        QT_NO_NARROWING_CONVERSIONS_IN_CONNECT)
if(ORV_SANITIZE)
    # The leak checker stays on; undefined behaviour aborts like any other error.
    target_compile_options(orv_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                               -fno-omit-frame-pointer)
    target_link_options(orv_flags INTERFACE -fsanitize=address,undefined)
endif()
if(ORV_HARDEN)
    target_compile_options(orv_flags INTERFACE -fstack-protector-strong -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS
                                               -Wformat -Wformat-security)
    target_link_options(orv_flags INTERFACE -Wl,-z,relro -Wl,-z,now)
    # Of x86 only.
    include(CheckCXXCompilerFlag)
    check_cxx_compiler_flag(-fcf-protection ORV_HAS_CF_PROTECTION)
    if(ORV_HAS_CF_PROTECTION)
        target_compile_options(orv_flags INTERFACE -fcf-protection)
    endif()
endif()
