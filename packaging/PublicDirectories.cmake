# Runs during installation. CMake creates missing directories with the umask, so with a umask of 077 other users could
# not access them. Files are not affected: they get the requested permissions.

# make_public_directory(DESTINATION): creates the directory and its missing parents. Existing directories do not change.
function(make_public_directory destination)
    cmake_path(ABSOLUTE_PATH destination BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX})
    make_public_path($ENV{DESTDIR}${destination})
endfunction()

function(make_public_path path)
    if(EXISTS ${path})
        return()
    endif()
    cmake_path(GET path PARENT_PATH parent)
    make_public_path(${parent})
    file(MAKE_DIRECTORY ${path})
    file(CHMOD ${path} PERMISSIONS
        OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
endfunction()
