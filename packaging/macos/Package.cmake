# Installs the application bundle with all that it needs, and makes a disk image of it. The steps stand in
# docs/packaging-macos.md. This has not been run on a Mac yet.

# The catalogue binds a whole selection to one statement. The system's own SQLite takes 500,000 values; one that is
# built with the usual limit takes 32,766 and would fail on large libraries.
file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/macos/sqlite-place place REGEX "^[^#]")
list(GET SQLite3_LIBRARIES 0 sqlite)
if(NOT sqlite MATCHES "${place}")
    message(FATAL_ERROR "${sqlite} is not the system's SQLite (${place}): set SQLite3_LIBRARY and SQLite3_INCLUDE_DIR "
                        "to those in the SDK")
endif()

set(bundle ${CMAKE_BINARY_DIR}/Orvanlite.app)
set(helper_contents Contents/Library/LoginItems/OrvanliteHelper.app/Contents)

# The icon, from the same drawing as on every system.
find_program(ORV_RSVG_CONVERT rsvg-convert REQUIRED)
set(icon ${bundle}/Contents/Resources/AppIcon.icns)
add_custom_command(
    OUTPUT ${icon}
    COMMAND ${PROJECT_SOURCE_DIR}/packaging/macos/make-icon ${PROJECT_SOURCE_DIR}/resources/AppIcon.svg ${icon}
    DEPENDS ${PROJECT_SOURCE_DIR}/resources/AppIcon.svg ${PROJECT_SOURCE_DIR}/packaging/macos/make-icon
    VERBATIM)
add_custom_target(orvanlite-icon ALL DEPENDS ${icon})

# The agent is a bundle in the bundle, and uses the libraries and plugins of the outer one.
file(WRITE ${bundle}/${helper_contents}/Resources/qt.conf "[Paths]\nPlugins = ../../../../PlugIns\n")

find_program(ORV_MACDEPLOYQT macdeployqt HINTS ${Qt6_DIR}/../../../bin REQUIRED)
install(DIRECTORY ${bundle} DESTINATION . USE_SOURCE_PERMISSIONS)
install(
    CODE "
    set(app \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Orvanlite.app\")
    execute_process(
        COMMAND \"${ORV_MACDEPLOYQT}\" \"\${app}\"
                \"-executable=\${app}/Contents/MacOS/orvanlite-script\"
                \"-executable=\${app}/${helper_contents}/MacOS/OrvanliteHelper\"
        COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/packaging/macos/check-bundle\" \"\${app}\"
                    COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND \"${PROJECT_SOURCE_DIR}/packaging/macos/sign\" \"\${app}\" COMMAND_ERROR_IS_FATAL ANY)
    ")

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME Orvanlite)
set(CPACK_PACKAGE_FILE_NAME Orvanlite-${PROJECT_VERSION})
set(CPACK_DMG_VOLUME_NAME Orvanlite)
set(CPACK_DMG_FORMAT UDZO)
set(CPACK_STRIP_FILES OFF) # it would break the signatures
include(CPack)
