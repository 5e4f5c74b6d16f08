# cmake --install build --prefix P puts the program in place:
#
#   P/lib/catalogue-manager/    the program folder: the executables, the sample
#                               catalogue and every data file the program reads by name
#   P/bin/catalogue-manager     the desktop program (a link into the program folder)
#   P/bin/catalogue-manager-headless
#   P/share/applications/catalogue-manager.desktop   the desktop menu's entry
#   P/share/icons/hicolor/scalable/apps/catalogue-manager.svg
#
# The program finds its folder from its own executable, through the links. Where that
# folder cannot be written, each user works in a copy of it (shell/program_folder.h).

include(GNUInstallDirs)
set(INSTALL_PROGRAM_DIR lib/catalogue-manager)

install(TARGETS catalogue-headless RUNTIME DESTINATION ${INSTALL_PROGRAM_DIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/program/ DESTINATION ${INSTALL_PROGRAM_DIR})

# The sample catalogue names its pictures by full path, so it is built again for the
# folder it is installed in.
install(CODE "
    set(folder \"\${CMAKE_INSTALL_PREFIX}/${INSTALL_PROGRAM_DIR}/\")
    message(STATUS \"Installing: \$ENV{DESTDIR}\${folder}tandrel2004.mde\")
    file(REMOVE \"\$ENV{DESTDIR}\${folder}tandrel2004.mde\")
    execute_process(COMMAND \"$<TARGET_FILE:make-catalogue>\"
        \"\$ENV{DESTDIR}\${folder}tandrel2004.mde\" \"\${folder}\"
        \"${PROJECT_SOURCE_DIR}/data/schema.sql\" \"${PROJECT_SOURCE_DIR}/data/sample.sql\"
        COMMAND_ERROR_IS_FATAL ANY)
")

# A link in bin/ to an executable of the program folder.
function(install_program_link name target)
    install(CODE "
        set(bin \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        file(MAKE_DIRECTORY \"\${bin}\")
        message(STATUS \"Installing: \${bin}/${name}\")
        file(CREATE_LINK \"../${INSTALL_PROGRAM_DIR}/${target}\" \"\${bin}/${name}\" SYMBOLIC)
    ")
endfunction()
install_program_link(catalogue-manager-headless catalogue-headless)

if(CATALOGUE_DESKTOP)
    install(TARGETS catalogue RUNTIME DESTINATION ${INSTALL_PROGRAM_DIR})
    install_program_link(catalogue-manager catalogue)
    install(FILES ${PROJECT_SOURCE_DIR}/data/desktop/catalogue-manager.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
    # The menu entry names the program by its full path, so that it starts from a prefix
    # that is not on the PATH.
    install(CODE "
        set(BIN_DIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}\")
        set(apps \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/applications\")
        message(STATUS \"Installing: \${apps}/catalogue-manager.desktop\")
        configure_file(\"${PROJECT_SOURCE_DIR}/data/desktop/catalogue-manager.desktop.in\"
            \"\${apps}/catalogue-manager.desktop\" @ONLY)
    ")
endif()
