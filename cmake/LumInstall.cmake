# What `cmake --install` puts where. Components: Runtime (the two shared libraries), Development
# (headers, link-time files, CMake package, pkg-config files), Tools (lumattr, its manual and the
# documents it refers to). Every file finds the others relative to itself: the installed tree may be
# moved.

function(lum_install_libraries)
  if(NOT WIN32)
    set_target_properties(LumAttributes PROPERTIES INSTALL_RPATH "$ORIGIN")
  endif()
  install(TARGETS LumAttributes LumPlatform EXPORT LumAttributesTargets
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Runtime
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development
    INCLUDES DESTINATION ${LUM_HEADER_DIR})
endfunction()

# The headers that applications include, and what those include in turn. All that stands in
# platform/ itself is public.
function(lum_install_headers)
  file(GLOB platform RELATIVE ${PROJECT_SOURCE_DIR} CONFIGURE_DEPENDS platform/*.h)
  set(headers
    ${platform}
    values/ArrayTypes.h
    values/DoubleType.h
    values/FreeFormType.h
    values/LumAttributesExport.h
    values/LumType.h
    values/LumTypeBase.h
    values/LumTypeCreator.h
    values/NameTypes.h
    values/RecordTypes.h
    values/ScalarTypes.h
    values/ValueSlot.h
    values/VectorTypes.h
    definitions/AttribDefMap.h
    definitions/AttribDefRec.h
    attributes/AttributeMap.h
    attributes/AttributePersistence.h
    attributes/AttributeRec.h
    catalogue/AttributeNames.def
    catalogue/AttributeNames.h
    catalogue/LumAttributes.h)
  foreach(header IN LISTS headers)
    cmake_path(GET header PARENT_PATH folder)
    install(FILES ${header} DESTINATION ${LUM_HEADER_DIR}/${folder} COMPONENT Development)
  endforeach()
endfunction()

# Programs built with one version run with every other that has the same first two parts.
function(lum_install_cmake_package)
  install(EXPORT LumAttributesTargets NAMESPACE LumAttributes::
    DESTINATION ${LUM_CMAKE_DIR} COMPONENT Development)
  configure_package_config_file(${LUM_TEMPLATE_DIR}/LumAttributesConfig.cmake.in
    ${PROJECT_BINARY_DIR}/LumAttributesConfig.cmake INSTALL_DESTINATION ${LUM_CMAKE_DIR}
    NO_SET_AND_CHECK_MACRO)
  write_basic_package_version_file(${PROJECT_BINARY_DIR}/LumAttributesConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES
    ${PROJECT_BINARY_DIR}/LumAttributesConfig.cmake
    ${PROJECT_BINARY_DIR}/LumAttributesConfigVersion.cmake
    DESTINATION ${LUM_CMAKE_DIR} COMPONENT Development)
endfunction()

function(lum_install_pkg_config library)
  file(RELATIVE_PATH LUM_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  configure_file(${LUM_TEMPLATE_DIR}/${library}.pc.in ${PROJECT_BINARY_DIR}/${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
    DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endfunction()

function(lum_install_tool)
  if(NOT TARGET lumattr)
    return()
  endif()
  install(TARGETS lumattr RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tools)
  set(documents lumattr configuration-files decoding definition-files formula-expressions formulas
    log-formats values)
  list(TRANSFORM documents REPLACE "(.+)" "docs/\\1.md")
  if(WIN32)
    install(FILES ${documents} DESTINATION docs COMPONENT Tools)
    return()
  endif()
  file(RELATIVE_PATH libraries /${CMAKE_INSTALL_BINDIR} /${CMAKE_INSTALL_LIBDIR})
  set_target_properties(lumattr PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries}")
  install(FILES ${documents} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/lumattr COMPONENT Tools)
  install(FILES packaging/lumattr.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tools)
endfunction()

option(LUM_INSTALL "Install the libraries and the tool, make packages" ${PROJECT_IS_TOP_LEVEL})
if(LUM_INSTALL AND LUM_PLATFORM_DIR)
  message(STATUS "Nothing is installed: LumPlatform comes from ${LUM_PLATFORM_DIR}")
elseif(LUM_INSTALL)
  include(GNUInstallDirs)
  include(CMakePackageConfigHelpers)
  set(LUM_TEMPLATE_DIR ${CMAKE_CURRENT_LIST_DIR})
  set(LUM_HEADER_DIR ${CMAKE_INSTALL_INCLUDEDIR}/LumAttributes)
  set(LUM_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/LumAttributes)

  lum_install_libraries()
  lum_install_headers()
  lum_install_cmake_package()
  lum_install_pkg_config(LumPlatform)
  lum_install_pkg_config(LumAttributes)
  lum_install_tool()
  include(LumPackages)
endif()
