# Run by CPack between the installation into its staging folder and the making of the packages: adds
# what only packages hold and gives every file the same time, so that packages of the same sources
# are the same.

set(stage ${CPACK_TEMPORARY_DIRECTORY})
set(packaging ${CPACK_LUM_SOURCE_DIR}/packaging)

# Appends the notices of libraries that are compiled into ours, as their packages on this machine
# hold them.
function(append_notices file)
  foreach(package IN LISTS ARGN)
    file(READ /usr/share/doc/${package}/copyright notice)
    file(APPEND ${file} "\n\nContains code of ${package}, with these notices:\n\n${notice}")
  endforeach()
endfunction()

function(compress file)
  execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Debian's files of every package: copyright and both changelogs.
function(add_debian_documents package component)
  set(folder ${stage}/${component}/usr/share/doc/${package})
  string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
  file(MAKE_DIRECTORY ${folder})
  file(COPY_FILE ${packaging}/debian/copyright ${folder}/copyright)
  file(COPY_FILE ${CPACK_LUM_SOURCE_DIR}/CHANGELOG.md ${folder}/changelog)
  configure_file(${packaging}/debian/changelog.in ${folder}/changelog.Debian @ONLY)
  compress(${folder}/changelog)
  compress(${folder}/changelog.Debian)
endfunction()

# The system knows where its libraries are.
function(remove_search_paths)
  file(GLOB binaries ${stage}/*/usr/bin/* ${stage}/*/usr/lib/*/*.so.*.*.*)
  foreach(binary IN LISTS binaries)
    file(RPATH_REMOVE FILE ${binary})
  endforeach()
endfunction()

function(stage_debian)
  foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    add_debian_documents(${CPACK_DEBIAN_${upper}_PACKAGE_NAME} ${component})
  endforeach()
  append_notices(${stage}/Tools/usr/share/doc/lumattr/copyright libcli11-dev nlohmann-json3-dev)
  compress(${stage}/Tools/usr/share/man/man1/lumattr.1)
  remove_search_paths()
endfunction()

function(stage_windows)
  file(GLOB documents ${CPACK_LUM_SOURCE_DIR}/docs/*.md)
  file(COPY ${documents} DESTINATION ${stage}/docs)
  file(COPY ${packaging}/windows/README.md DESTINATION ${stage})
  file(COPY_FILE ${packaging}/debian/copyright ${stage}/licences.txt)
  append_notices(${stage}/licences.txt
    libcli11-dev nlohmann-json3-dev gcc-mingw-w64-x86-64-posix-runtime mingw-w64-x86-64-dev)
endfunction()

if(CPACK_GENERATOR STREQUAL "DEB")
  stage_debian()
else()
  stage_windows()
endif()
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND find ${stage} -exec touch -hd @$ENV{SOURCE_DATE_EPOCH} {} +
    COMMAND_ERROR_IS_FATAL ANY)
endif()
