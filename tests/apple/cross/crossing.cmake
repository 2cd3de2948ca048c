# Included right after project() by the test that links macOS programs: finds the libraries as on Linux, replaces them by
# stubs, and continues as on a Mac, with clang compiling for macOS. The headers remain those of Linux, so the programs
# cannot run; what can be seen is whether every symbol is in something that we link.
include(${CMAKE_CURRENT_LIST_DIR}/../branches.cmake)
enable_language(OBJCXX)
set(stubs ${CMAKE_BINARY_DIR}/stubs)
file(MAKE_DIRECTORY ${stubs})

# orv_stub(<result> <library>)
function(orv_stub result library)
    file(REAL_PATH ${library} library)
    string(REGEX REPLACE "\\.so.*" "" name ${library})
    cmake_path(GET name FILENAME name)
    execute_process(COMMAND sh ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/stub.sh ${library} ${stubs}/${name}.tbd
                    COMMAND_ERROR_IS_FATAL ANY)
    set(${result} ${stubs}/${name}.tbd PARENT_SCOPE)
endfunction()
foreach(target Qt6::Concurrent Qt6::Core Qt6::Gui Qt6::Network Qt6::Svg Qt6::Widgets QCoro6::Core QCoro6::Network)
    get_target_property(library ${target} IMPORTED_LOCATION_NONE)
    orv_stub(stub ${library})
    set_target_properties(${target} PROPERTIES IMPORTED_LOCATION_NONE ${stub} IMPORTED_LOCATION_RELEASE ${stub}
                                               IMPORTED_LOCATION ${stub})
endforeach()
set_target_properties(WrapOpenGL::WrapOpenGL PROPERTIES INTERFACE_LINK_LIBRARIES "")
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++.so OUTPUT_VARIABLE library
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
orv_stub(ignored ${library})
find_library(library_of_expat expat)
orv_stub(EXPAT_LIBRARY ${library_of_expat})

set(CMAKE_SKIP_RPATH ON)
set(CMAKE_SHARED_LIBRARY_LINK_CXX_FLAGS "") # of Linux
find_program(ORV_MACHO_AR NAMES llvm-ar llvm-ar-14 REQUIRED)
find_program(ORV_MACHO_RANLIB NAMES llvm-ranlib llvm-ranlib-14 REQUIRED)
set(CMAKE_AR ${ORV_MACHO_AR})
set(CMAKE_RANLIB ${ORV_MACHO_RANLIB})
foreach(language CXX OBJCXX)
    set(CMAKE_${language}_FLAGS "@${ORV_CROSS_FLAGS}")
    string(TOLOWER ${language} prefix)
    # Precompiled once for all targets, although their definitions of Qt's modules differ.
    set(CMAKE_${language}_FLAGS_RELEASE
        "-O0 -w -include-pch ${CMAKE_BINARY_DIR}/${prefix}.pch -Xclang -fno-validate-pch")
endforeach()
set(CMAKE_EXE_LINKER_FLAGS "-fuse-ld=lld -L${stubs} -L${CMAKE_CURRENT_LIST_DIR}/stubs -F${CMAKE_CURRENT_LIST_DIR}/stubs")
