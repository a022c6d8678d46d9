# The packages that CPack makes of a build folder: three Debian packages, or an archive for Windows.
# scripts/package runs it.

set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "LumAttributes developers")
set(CPACK_PACKAGE_CONTACT "LumAttributes developers <developers@lumattributes.invalid>")
# Each component has its own synopsis.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_LUM_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/StageFiles.cmake)

# A Debian package's name and description: a synopsis, then what it contains.
function(lum_describe_package component package section synopsis contents)
  string(TOUPPER CPACK_DEBIAN_${component} prefix)
  string(JOIN "\n" description
    "${synopsis}"
    "LumAttributes is what applications of survey vessels, dredgers and"
    "data-acquisition systems share: typed values with text forms, attribute"
    "trees stored in configuration files, their definitions, a catalogue of"
    "names and the operations of formulas."
    "."
    "This package contains ${contents}.")
  set(${prefix}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(${prefix}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(${prefix}_DESCRIPTION "${description}" PARENT_SCOPE)
endfunction()

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME LumAttributes-${PROJECT_VERSION}-win64)
  set(CPACK_MONOLITHIC_INSTALL ON)
else()
  set(soversion ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  lum_describe_package(Runtime liblumattributes${soversion} libs
    "typed attributes for survey applications - shared libraries"
    "the shared libraries that programs need at run time")
  lum_describe_package(Development liblumattributes-dev libdevel
    "typed attributes for survey applications - development files"
    "the headers, the CMake package and the pkg-config files")
  lum_describe_package(Tools lumattr utils
    "show, change, compare, merge and check files of attributes"
    "the command-line tool lumattr and its manual")
  set(CPACK_GENERATOR DEB)
  set(CPACK_COMPONENTS_ALL Runtime Development Tools)
  set(CPACK_COMPONENT_DEVELOPMENT_DEPENDS Runtime)
  set(CPACK_COMPONENT_TOOLS_DEPENDS Runtime)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS gnuplot)
  set(CPACK_DEB_COMPONENT_INSTALL ON)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
  set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
  set(CPACK_DEBIAN_PACKAGE_SOURCE lumattributes)
  set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
  set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS
    ${PROJECT_BINARY_DIR} ${PROJECT_BINARY_DIR}/platform)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
endif()
include(CPack)
