# Installs the self-contained application bundle and creates a disk image. docs/packaging-macos.md describes the
# steps. This has not been run on a Mac yet.
set(here ${PROJECT_SOURCE_DIR}/packaging/macos)
set(bundle ${CMAKE_BINARY_DIR}/Orvanlite.app)
set(helper Contents/Library/LoginItems/OrvanliteHelper.app)
set(script Contents/Helpers/Orvanlite.app)

# One icon for all bundles, from the drawing used on every system. Not needed for building alone.
find_program(ORV_RSVG_CONVERT rsvg-convert)
if(ORV_RSVG_CONVERT)
    set(icon ${bundle}/Contents/Resources/AppIcon.icns)
    set(drawing ${PROJECT_SOURCE_DIR}/resources/AppIcon.svg)
    add_custom_command(
        OUTPUT ${icon}
        COMMAND ${CMAKE_COMMAND} -E env ORV_RSVG_CONVERT=${ORV_RSVG_CONVERT} ${here}/make-icon ${drawing} ${icon}
        DEPENDS ${drawing} ${here}/make-icon
        VERBATIM)
    add_custom_target(orvanlite-icon ALL DEPENDS ${icon})
else()
    message(STATUS "No rsvg-convert: the bundle gets no icon and cannot be packaged")
endif()

# Targets, not the folder: installing removes this machine's paths from the programs.
install(TARGETS plugin-manager RUNTIME DESTINATION Orvanlite.app/Contents/MacOS)
install(TARGETS OrvanliteHelper RUNTIME DESTINATION Orvanlite.app/${helper}/Contents/MacOS)
install(TARGETS orvanlite-script RUNTIME DESTINATION Orvanlite.app/${script}/Contents/MacOS)
foreach(each . ${helper} ${script})
    install(FILES ${bundle}/${each}/Contents/Info.plist DESTINATION Orvanlite.app/${each}/Contents)
    install(FILES ${bundle}/Contents/Resources/AppIcon.icns DESTINATION Orvanlite.app/${each}/Contents/Resources)
endforeach()
# The agent is a nested bundle and uses the outer one's plugins. Not in the build folder, where those of the installed
# Qt are used.
install(FILES ${here}/qt.conf DESTINATION Orvanlite.app/${helper}/Contents/Resources)

find_program(ORV_MACDEPLOYQT macdeployqt HINTS ${Qt6_DIR}/../../../bin)
install(
    CODE "
    set(app \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/Orvanlite.app\")
    # Naming the other programs makes each find the libraries relative to its own location.
    execute_process(
        COMMAND \"${ORV_MACDEPLOYQT}\" \"\${app}\" -verbose=1
                \"-executable=\${app}/${script}/Contents/MacOS/orvanlite-script\"
                \"-executable=\${app}/${helper}/Contents/MacOS/OrvanliteHelper\"
        COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
    set(steps check-bundle sign)
    # The image is made of the signed application, so its ticket has to be stapled before.
    if(NOT \"\$ENV{ORV_NOTARY_PROFILE}\$ENV{ORV_NOTARY_KEY}\" STREQUAL \"\")
        list(APPEND steps notarise)
    endif()
    foreach(step IN LISTS steps)
        execute_process(COMMAND \"${here}/\${step}\" \"\${app}\" COMMAND_ECHO STDOUT COMMAND_ERROR_IS_FATAL ANY)
    endforeach()
    ")

set(CPACK_GENERATOR DragNDrop)
set(CPACK_PACKAGE_NAME Orvanlite)
set(CPACK_PACKAGE_FILE_NAME Orvanlite-${PROJECT_VERSION})
set(CPACK_DMG_VOLUME_NAME Orvanlite)
set(CPACK_DMG_FORMAT UDZO)
set(CPACK_STRIP_FILES OFF) # it would break the signatures
include(CPack)
