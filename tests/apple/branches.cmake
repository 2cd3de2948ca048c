# Included by the check of CMake's Apple branches, right after project(): finds the libraries as on Linux, then
# continues as on a Mac. The result cannot be built.
find_package(Qt6 6.4 REQUIRED COMPONENTS Concurrent Core Gui Network Svg Widgets Test)
find_package(QCoro6 REQUIRED COMPONENTS Core Network)
macro(find_package name)
    if(NOT "${name}" MATCHES "^(Qt6|QCoro6)$")
        _find_package(${name} ${ARGN})
    endif()
endmacro()
set(APPLE TRUE)
