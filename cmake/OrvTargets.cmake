# orv_add_library(<name> SOURCES <files...> [USES <orv targets...>] [LIBRARIES <outside targets...>])
#
# Creates the static library of a subsystem. USES may only name existing targets: the order of add_subdirectory() is
# the layer order, and a cycle of static libraries, which CMake accepts silently, fails the configuration here.
function(orv_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES;LIBRARIES" ${ARGN})
    foreach(used IN LISTS ARG_USES)
        if(NOT TARGET ${used})
            message(FATAL_ERROR "${name} uses ${used}, which is no layer below it")
        endif()
    endforeach()
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC orv_flags ${ARG_USES} ${ARG_LIBRARIES})
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
endfunction()

# orv_add_tests(<name> SOURCES <files...> USES <orv targets...>)
#
# Creates the test executable of a folder and its ctest entry. orv_test_main provides main().
function(orv_add_tests name)
    cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE ${ARG_USES} orv_test_support orv_test_main)
    set_target_properties(${name} PROPERTIES AUTOMOC ON)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
endfunction()
