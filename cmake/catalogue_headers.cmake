# catalogue_headers(TARGET SCOPE FOLDER...): the target offers the headers of these src/
# folders as "folder/name.h", to itself and (SCOPE PUBLIC or INTERFACE) to what links it, and
# to nothing else. Each folder is reached through an include folder of its own in the build
# tree, so a layer sees only the headers of the layers it links: an include across the
# layers' order fails to compile.
function(catalogue_headers target scope)
    foreach(folder IN LISTS ARGN)
        set(root ${CMAKE_BINARY_DIR}/include/${folder})
        file(MAKE_DIRECTORY ${root})
        file(CREATE_LINK ${PROJECT_SOURCE_DIR}/src/${folder} ${root}/${folder} SYMBOLIC)
        target_include_directories(${target} ${scope} ${root})
    endforeach()
endfunction()
