# Run by cpack between installing and packing: gives each package what Debian asks of it and no other installation has.
# Libraries lie in folders of the system, so none is looked for elsewhere.
execute_process(COMMAND date -R -u -d ${CPACK_VANTRY_RELEASE_DATE} OUTPUT_VARIABLE day
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
string(CONCAT changelog "vantry (${CPACK_PACKAGE_VERSION}) unstable; urgency=low\n\n"
       "  * A new release; /usr/share/doc/vantry/CHANGELOG.md tells what is new.\n\n"
       " -- ${CPACK_PACKAGE_CONTACT}  ${day}\n")
file(READ ${CPACK_VANTRY_SOURCES}/LICENSE licence)

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(root ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr)
    set(documents ${root}/share/doc/${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    file(MAKE_DIRECTORY ${documents})
    file(REMOVE ${documents}/LICENSE)
    file(WRITE ${documents}/copyright "${licence}")
    file(WRITE ${documents}/changelog "${changelog}")
    execute_process(COMMAND gzip -9nf ${documents}/changelog COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB manuals ${root}/share/man/man1/*.1 ${root}/share/man/de/man1/*.1)
    if(manuals)
        execute_process(COMMAND gzip -9nf ${manuals} COMMAND_ERROR_IS_FATAL ANY)
    endif()
    file(GLOB_RECURSE binaries ${root}/bin/* ${root}/lib/*.so ${root}/lib/*.so.*)
    foreach(binary IN LISTS binaries)
        if(IS_SYMLINK ${binary})
            continue()
        endif()
        file(RPATH_REMOVE FILE ${binary})
    endforeach()
endforeach()

# The libraries are of one release and one SONAME, so they share a package. Its scripts are written by cpack, and call
# ldconfig beside the trigger, which does no harm.
set(package ${CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME})
file(WRITE ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/libraries/usr/share/lintian/overrides/${package}
     "${package}: package-name-doesnt-match-sonames *\n${package}: maintscript-calls-ldconfig *\n")
