# What an installed Vantroque has beside its programs, and two Debian packages made of it:
# vantroque-cli, and vantroque with the window, which needs the first.

set(packaged ${CMAKE_BINARY_DIR}/Packaging)
set(described ${CMAKE_SOURCE_DIR}/Packaging)

# packed_file(SOURCE FOLDER NAME COMPONENT): a text that is installed compressed, the same at each build.
function(packed_file source folder name component)
    set(packed ${packaged}/${component}/${name}.gz)
    add_custom_command(OUTPUT ${packed}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${packaged}/${component}
        COMMAND gzip -9nc ${source} > ${packed}
        DEPENDS ${source} VERBATIM)
    set_property(GLOBAL APPEND PROPERTY VANTROQUE_PACKED ${packed})
    install(FILES ${packed} DESTINATION ${folder} COMPONENT ${component})
endfunction()

# told_by_cli(FILE WORDS...): what the program prints for these words.
function(told_by_cli file)
    add_custom_command(OUTPUT ${packaged}/${file}
        COMMAND ${CMAKE_COMMAND} -E make_directory ${packaged}
        COMMAND vantroque-cli ${ARGN} > ${packaged}/${file}
        DEPENDS vantroque-cli VERBATIM)
    set_property(GLOBAL APPEND PROPERTY VANTROQUE_PACKED ${packaged}/${file})
endfunction()

told_by_cli(vantroque-cli.1 --manual)
told_by_cli(vantroque-cli.bash --completion bash)
told_by_cli(_vantroque-cli --completion zsh)
told_by_cli(vantroque-cli.fish --completion fish)
packed_file(${packaged}/vantroque-cli.1 ${CMAKE_INSTALL_MANDIR}/man1 vantroque-cli.1 cli)
packed_file(${described}/vantroque.1 ${CMAKE_INSTALL_MANDIR}/man1 vantroque.1 window)
install(FILES ${packaged}/vantroque-cli.bash RENAME vantroque-cli
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT cli)
install(FILES ${packaged}/_vantroque-cli
    DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions COMPONENT cli)
install(FILES ${packaged}/vantroque-cli.fish
    DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT cli)
install(FILES ${described}/vantroque.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT window)
install(FILES ${described}/org.vantroque.Vantroque.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT window)
install(FILES Resources/Icons/vantroque.svg
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps COMPONENT window)
install(FILES ${described}/vantroque-512.png RENAME vantroque.png
    DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/512x512/apps COMPONENT window)
set(package_of_cli vantroque-cli)
set(package_of_window vantroque)
foreach(component cli window)
    set(folder ${CMAKE_INSTALL_DATADIR}/doc/${package_of_${component}})
    install(FILES ${described}/copyright DESTINATION ${folder} COMPONENT ${component})
    packed_file(${described}/changelog ${folder} changelog ${component})
endforeach()
install(FILES docs/CAPTIONS.md docs/DAMAGE.md docs/FARM.md docs/FLASHES.md docs/SAFETY.md docs/SOUND.md docs/WATCH.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantroque-cli COMPONENT cli)
install(DIRECTORY docs/ci docs/examples/
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantroque-cli/examples COMPONENT cli)
install(PROGRAMS scripts/slurm-check
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vantroque-cli/examples COMPONENT cli)
get_property(packed GLOBAL PROPERTY VANTROQUE_PACKED)
add_custom_target(packaging ALL DEPENDS ${packed})

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL cli window)
set(CPACK_PACKAGE_CONTACT "The Vantroque developers <developers@vantroque.org>")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_CLI_PACKAGE_NAME vantroque-cli)
set(CPACK_DEBIAN_CLI_PACKAGE_DEPENDS "ffmpeg, tesseract-ocr-eng")
set(CPACK_DEBIAN_CLI_PACKAGE_RECOMMENDS "hunspell-en-us, fonts-noto-core")
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME vantroque)
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS
    "vantroque-cli (= ${PROJECT_VERSION}), fonts-inter, fonts-jetbrains-mono, qt6-qpa-plugins")
set(CPACK_DEBIAN_WINDOW_PACKAGE_RECOMMENDS "fonts-noto-cjk, fonts-noto-color-emoji")
set(CPACK_COMPONENT_CLI_DESCRIPTION
    "The command line. Tells whether finished videos (TV spots, online ads, social
cuts) meet the delivery specifications of the platforms they are meant for:
what was measured, what was expected and how to fix it. Writes text, JSON,
JUnit, PDF, markers for editing systems and tables.")
set(CPACK_COMPONENT_WINDOW_DESCRIPTION
    "Drop finished videos on the window, and read which platforms take them, what
is wrong and how to fix it. Around the report stand a player that is exact to
the frame, scopes, guides, captions, notes, drawings, a decision, and a view
that compares versions.")
include(CPack)
