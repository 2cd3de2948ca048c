# Installs the application and makes a Debian package of it. What goes where stands in docs/packaging-linux.md.
include(GNUInstallDirs)
find_program(ORV_GZIP gzip)
find_program(ORV_RSVG_CONVERT rsvg-convert)

# The names that the window, the notifications and the settings know the application by.
set(id com.yourcompany.Orvanlite)
set(made ${CMAKE_BINARY_DIR}/packaging) # all files that are not just copied
set(bundle lib/orvanlite/Orvanlite.app) # not below the folder for one architecture, it is a program of its own

# The day of the release; scripts/package sets SOURCE_DATE_EPOCH to that of the last commit.
string(TIMESTAMP ORV_DAY "%Y-%m-%d" UTC)
string(TIMESTAMP ORV_DAY_IN_WORDS "%B %d, %Y" UTC)
string(REPLACE " 0" " " ORV_DAY_IN_WORDS ${ORV_DAY_IN_WORDS})
string(TIMESTAMP ORV_MOMENT "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(ORV_CONTACT "Orvanlite developers <developers@orvanlite.invalid>")

# The terms of libraries that are headers want to stand beside a program that was compiled with them.
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
    configure_file(${CMAKE_CURRENT_LIST_DIR}/${file}.in ${made}/${file} @ONLY)
endforeach()

# The application as one folder, found from its executable; the command is a link to that.
install(TARGETS plugin-manager RUNTIME DESTINATION ${bundle}/Contents/MacOS)
install(FILES ${CMAKE_BINARY_DIR}/Orvanlite.app/Contents/Info.plist DESTINATION ${bundle}/Contents)
set(helper Contents/Library/LoginItems/OrvanliteHelper.app/Contents)
install(TARGETS OrvanliteHelper RUNTIME DESTINATION ${bundle}/${helper}/MacOS)
install(FILES ${CMAKE_BINARY_DIR}/Orvanlite.app/${helper}/Info.plist DESTINATION ${bundle}/${helper})
file(MAKE_DIRECTORY ${made}/bin)
file(CREATE_LINK ../${bundle}/Contents/MacOS/plugin-manager ${made}/bin/plugin-manager SYMBOLIC)
install(FILES ${made}/bin/plugin-manager DESTINATION ${CMAKE_INSTALL_BINDIR})

install(TARGETS orvanlite-root-runner RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR})
install(FILES ${made}/${id}.policy DESTINATION ${CMAKE_INSTALL_DATADIR}/polkit-1/actions)

install(FILES ${CMAKE_CURRENT_LIST_DIR}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${made}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)

# The drawing for all sizes, and pictures for desktops that take no drawings.
set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
set(drawing ${PROJECT_SOURCE_DIR}/resources/AppIcon.svg)
install(FILES ${drawing} DESTINATION ${icons}/scalable/apps RENAME ${id}.svg)
set(outputs "")
if(ORV_RSVG_CONVERT)
    foreach(size 16 24 32 48 64 128 256)
        set(picture ${made}/icon-${size}.png)
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
        OUTPUT ${made}/${name}.gz
        COMMAND ${ORV_GZIP} -9cn ${file} > ${made}/${name}.gz
        DEPENDS ${file}
        VERBATIM)
    install(FILES ${made}/${name}.gz DESTINATION ${destination})
    set(outputs ${outputs} ${made}/${name}.gz PARENT_SCOPE)
endfunction()
orv_install_compressed(${made}/plugin-manager.1 ${CMAKE_INSTALL_MANDIR}/man1 plugin-manager.1)
set(papers ${CMAKE_INSTALL_DATADIR}/doc/orvanlite)
orv_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${papers} changelog)
orv_install_compressed(${made}/changelog.Debian ${papers} changelog.Debian)
install(FILES ${made}/copyright DESTINATION ${papers})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
        RENAME orvanlite)
add_custom_target(orvanlite-package-files ALL DEPENDS ${outputs})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME orvanlite)
set(CPACK_PACKAGE_CONTACT ${ORV_CONTACT})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "desktop manager for audio plugins")
set(CPACK_PACKAGE_DESCRIPTION_FILE ${CMAKE_CURRENT_LIST_DIR}/description.txt)
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
# Not those of the umask of the one who calls.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is started and not linked. Switching plugins, which is what the application is for, goes through pkexec.
set(CPACK_DEBIAN_PACKAGE_DEPENDS pkexec)
# Something that shows pkexec's prompt (each desktop brings its own), opens links and speaks to Wayland directly.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "polkit-1-auth-agent, qt6-wayland, xdg-utils")
include(CPack)
