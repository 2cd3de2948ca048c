# Installs the application and builds a Debian package. docs/packaging-linux.md describes the layout.
include(GNUInstallDirs)
find_program(ORV_GZIP gzip)
find_program(ORV_RSVG_CONVERT rsvg-convert)

# The application id of windows, notifications and settings.
set(id com.yourcompany.Orvanlite)
set(generated ${CMAKE_BINARY_DIR}/packaging) # generated files
set(bundle lib/orvanlite/Orvanlite.app) # not below the architecture's folder: it is a self-contained program

# The day of the release; scripts/package sets SOURCE_DATE_EPOCH to that of the last commit.
string(TIMESTAMP ORV_DAY "%Y-%m-%d" UTC)
string(TIMESTAMP ORV_DAY_IN_WORDS "%B %d, %Y" UTC)
string(REPLACE " 0" " " ORV_DAY_IN_WORDS ${ORV_DAY_IN_WORDS})
string(TIMESTAMP ORV_MOMENT "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(ORV_CONTACT "Orvanlite developers <developers@orvanlite.invalid>")
# Also has the pictures of docs/images/ for software centres, in screenshots/. The default host cannot exist.
set(ORV_HOMEPAGE "https://www.orvanlite.invalid" CACHE STRING "Home page, without a slash at the end")

# Licences of header-only libraries have to accompany programs compiled with them.
set(ORV_NOTICES "")
foreach(library libcli11-dev nlohmann-json3-dev qcoro-qt6-dev)
    set(notice /usr/share/doc/${library}/copyright)
    if(EXISTS ${notice})
        file(READ ${notice} text)
        string(APPEND ORV_NOTICES "\n---- ${library} ----\n\n${text}")
    else()
        message(STATUS "No ${notice}: a package that is made here lacks it")
    endif()
endforeach()
foreach(file ${id}.metainfo.xml ${id}.policy changelog.Debian copyright plugin-manager.1)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${file}.in ${generated}/${file} @ONLY)
endforeach()

# The application is one folder, located from its executable; the command is a link to that.
install(TARGETS plugin-manager RUNTIME DESTINATION ${bundle}/Contents/MacOS)
install(FILES ${CMAKE_BINARY_DIR}/Orvanlite.app/Contents/Info.plist DESTINATION ${bundle}/Contents)
set(helper Contents/Library/LoginItems/OrvanliteHelper.app/Contents)
install(TARGETS OrvanliteHelper RUNTIME DESTINATION ${bundle}/${helper}/MacOS)
install(FILES ${CMAKE_BINARY_DIR}/Orvanlite.app/${helper}/Info.plist DESTINATION ${bundle}/${helper})
file(MAKE_DIRECTORY ${generated}/bin)
file(CREATE_LINK ../${bundle}/Contents/MacOS/plugin-manager ${generated}/bin/plugin-manager SYMBOLIC)
install(FILES ${generated}/bin/plugin-manager DESTINATION ${CMAKE_INSTALL_BINDIR})

install(TARGETS orvanlite-root-runner RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
install(FILES ${generated}/${id}.policy DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)

install(FILES ${CMAKE_CURRENT_LIST_DIR}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${generated}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The scalable icon, and bitmaps for desktops without SVG support.
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(drawing ${PROJECT_SOURCE_DIR}/resources/AppIcon.svg)
install(FILES ${drawing} DESTINATION ${icons}/scalable/apps RENAME ${id}.svg)
set(outputs "")
if(ORV_RSVG_CONVERT)
    foreach(size 16 24 32 48 64 128 256)
        set(picture ${generated}/icon-${size}.png)
        add_custom_command(
            OUTPUT ${picture}
            COMMAND ${ORV_RSVG_CONVERT} --width=${size} --height=${size} --output=${picture} ${drawing}
            DEPENDS ${drawing}
            VERBATIM)
        install(FILES ${picture} DESTINATION ${icons}/${size}x${size}/apps RENAME ${id}.png)
        list(APPEND outputs ${picture})
    endforeach()
endif()

# orv_install_compressed(<file> <destination> <name>)
function(orv_install_compressed file destination name)
    add_custom_command(
        OUTPUT ${generated}/${name}.gz
        COMMAND ${ORV_GZIP} -9cn ${file} > ${generated}/${name}.gz
        DEPENDS ${file}
        VERBATIM)
    install(FILES ${generated}/${name}.gz DESTINATION ${destination})
    set(outputs ${outputs} ${generated}/${name}.gz PARENT_SCOPE)
endfunction()
orv_install_compressed(${generated}/plugin-manager.1 ${CMAKE_INSTALL_MANDIR}/man1 plugin-manager.1)
set(docs ${CMAKE_INSTALL_DATADIR}/doc/orvanlite)
orv_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${docs} changelog)
orv_install_compressed(${generated}/changelog.Debian ${docs} changelog.Debian)
install(FILES ${generated}/copyright DESTINATION ${docs})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME orvanlite)
add_custom_target(orvanlite-package-files ALL DEPENDS ${outputs})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvanlite)
set(CPACK_PACKAGE_CONTACT ${ORV_CONTACT})
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${ORV_HOMEPAGE})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop manager for audio plugins")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${CMAKE_CURRENT_LIST_DIR}/description.txt)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
# Independent of the caller's umask.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Started, not linked. Enabling and disabling plugins, the application's purpose, needs pkexec.
set(CPACK_DEBIAN_PACKAGE_DEPENDS pkexec)
# An agent for pkexec's prompt (each desktop has its own), a tool to open links, and native Wayland support.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "polkit-1-auth-agent, qt6-wayland, xdg-utils")
include(CPack)
