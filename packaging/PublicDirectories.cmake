# Runs while installing. CMake makes missing folders with mkdir(2) alone, so that root with a umask of 077 would lock
# everybody out of them; the files in them get their modes as they were asked for.

# make_public_folder(DESTINATION): makes it and what is missing above it; what is there stays as it is.
function(make_public_folder destination)
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
