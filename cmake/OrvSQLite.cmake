# The catalogue binds a whole selection to one statement, one parameter per plugin. SQLite's default limit is 32,766
# parameters, and larger selections return nothing; Debian's limit is 250,000, that of macOS 500,000.
set(ORV_SQLITE_PARAMETERS 100000)

if(APPLE)
    # Use the system's SQLite even if another one is installed.
    if(NOT SQLite3_LIBRARY)
        set(sdk "${CMAKE_OSX_SYSROOT}")
        if(NOT IS_DIRECTORY "${sdk}")
            execute_process(COMMAND xcrun --sdk macosx --show-sdk-path OUTPUT_VARIABLE sdk
                            OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        endif()
        set(SQLite3_INCLUDE_DIR ${sdk}/usr/include CACHE PATH "Headers of the system's SQLite")
        set(SQLite3_LIBRARY ${sdk}/usr/lib/libsqlite3.tbd CACHE FILEPATH "The system's SQLite")
    endif()
    if(NOT SQLite3_LIBRARY MATCHES "/usr/lib/libsqlite3\\.(tbd|dylib)$")
        message(FATAL_ERROR "Not the system's SQLite: ${SQLite3_LIBRARY}")
    endif()
endif()
find_package(SQLite3 REQUIRED)

if(NOT CMAKE_CROSSCOMPILING AND NOT DEFINED ORV_SQLITE_TAKES_SELECTIONS)
    include(CheckCXXSourceRuns)
    set(CMAKE_REQUIRED_LIBRARIES SQLite::SQLite3)
    check_cxx_source_runs(
        "#include <sqlite3.h>
         int main()
         {
             sqlite3* db = nullptr;
             sqlite3_open(\":memory:\", &db);
             return sqlite3_limit(db, SQLITE_LIMIT_VARIABLE_NUMBER, -1) < ${ORV_SQLITE_PARAMETERS};
         }"
        ORV_SQLITE_TAKES_SELECTIONS)
    unset(CMAKE_REQUIRED_LIBRARIES)
endif()
if(NOT CMAKE_CROSSCOMPILING AND NOT ORV_SQLITE_TAKES_SELECTIONS)
    message(FATAL_ERROR "${SQLite3_LIBRARY} takes fewer than ${ORV_SQLITE_PARAMETERS} parameters: "
                        "it was built without a larger SQLITE_MAX_VARIABLE_NUMBER")
endif()
