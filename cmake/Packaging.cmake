# How the application is installed and packaged on the system that it is built for.
if(APPLE)
    include(${PROJECT_SOURCE_DIR}/packaging/macos/Package.cmake OPTIONAL)
else()
    include(${PROJECT_SOURCE_DIR}/packaging/linux/Package.cmake)
endif()
