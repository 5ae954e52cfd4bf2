# Debian packages: each component is one. Made by cpack, or by scripts/package with Debian's own folders.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vantry)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_VENDOR "The Vantry developers")
set(CPACK_PACKAGE_CONTACT "The Vantry developers <vantry@packages.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_SOURCE_DIR}/finish-debian.cmake)
set(CPACK_VANTRY_SOURCES ${PROJECT_SOURCE_DIR})
set(CPACK_VANTRY_RELEASE_DATE ${VANTRY_RELEASE_DATE})

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL programs libraries development)
if(VANTRY_ETCD)
    list(APPEND CPACK_COMPONENTS_ALL etcd)
endif()
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(libraries_package libvantry${VANTRY_SOVERSION})
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_NAME vantry)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_DEPENDS "${libraries_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_RECOMMENDS "fonts-dejavu-core, qttranslations5-l10n")
set(CPACK_DEBIAN_PROGRAMS_PACKAGE_SUGGESTS vantry-etcd)
set(CPACK_DEBIAN_PROGRAMS_DESCRIPTION
    "one window over all configuration of a system
Vantry opens configuration files and folders of them as one tree of typed
attributes, in a window or on the command line. An edit of one value changes
the bytes of that value; comments, order and spacing survive.")

set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${libraries_package})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
foreach(library core host repository)
    string(APPEND shlibs "libvantry_${library} ${VANTRY_SOVERSION} ${libraries_package} (>= ${PROJECT_VERSION})\n")
endforeach()
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/debian/shlibs ${shlibs})
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/debian/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/debian/shlibs
                                                 ${CMAKE_CURRENT_BINARY_DIR}/debian/triggers)
set(CPACK_DEBIAN_LIBRARIES_DESCRIPTION
    "attribute repository and plug-in host of Vantry
The libraries that mount configuration files into one tree of typed
attributes, and that show it in windows.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME vantry-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${libraries_package} (= ${PROJECT_VERSION}), qtbase5-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
    "headers and examples for programs and plug-ins of Vantry
What is needed to build programs that mount configuration files, and plug-ins
of the window, with two examples.")

set(CPACK_DEBIAN_ETCD_PACKAGE_NAME vantry-etcd)
set(CPACK_DEBIAN_ETCD_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_ETCD_PACKAGE_DEPENDS "${libraries_package} (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_ETCD_DESCRIPTION
    "parts of an etcd store in the tree of Vantry
With this module Vantry mounts a part of the distributed store etcd like a
file: all machines that have it open see each other's edits.")

include(CPack)
