# orv_app_bundle(<executable target> BUNDLE <path/X.app> INFO_PLIST <Info.plist.in>)
#
# Places the executable in an application bundle, with the same layout on every system:
#     X.app/Contents/MacOS/<executable>, X.app/Contents/Info.plist, X.app/Contents/Resources/
# INFO_PLIST is filled in with the project's values and with @ORV_BUNDLE_EXECUTABLE@, the executable's name.
function(orv_app_bundle target)
    cmake_parse_arguments(ARG "" "BUNDLE;INFO_PLIST" "" ${ARGN})
    get_target_property(ORV_BUNDLE_EXECUTABLE ${target} OUTPUT_NAME)
    if(NOT ORV_BUNDLE_EXECUTABLE)
        set(ORV_BUNDLE_EXECUTABLE ${target})
    endif()
    set(contents ${ARG_BUNDLE}/Contents)
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${contents}/MacOS)
    configure_file(${ARG_INFO_PLIST} ${contents}/Info.plist @ONLY)
    file(MAKE_DIRECTORY ${contents}/Resources)
endfunction()
