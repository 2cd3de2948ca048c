# Installation and packaging for the target system.
if(APPLE)
    include(${PROJECT_SOURCE_DIR}/packaging/macos/Package.cmake OPTIONAL)
else()
    include(${PROJECT_SOURCE_DIR}/packaging/linux/Package.cmake)
endif()
