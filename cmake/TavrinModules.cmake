# Modules: parts of the program that are loaded at run time, when they are first needed, because the
# libraries behind them would slow down every start.
#
# tavrin_module(NAME SOURCES ... PRIVATE ...) makes and installs tavrin-NAME. Programs find it with
# platform::findModule().
function(tavrin_module name)
    cmake_parse_arguments(PARSE_ARGV 1 MODULE "" "" "SOURCES;PRIVATE")
    add_library(tavrin-${name} MODULE ${MODULE_SOURCES})
    target_link_libraries(tavrin-${name} PRIVATE tavrin-options ${MODULE_PRIVATE})
    set_target_properties(tavrin-${name} PROPERTIES PREFIX "" CXX_VISIBILITY_PRESET hidden)
    install(TARGETS tavrin-${name} LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/tavrin)
endfunction()

# Where the modules are, seen from the program's folder: installed, and in the build tree.
file(RELATIVE_PATH installedFolder
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR}/tavrin)
file(RELATIVE_PATH builtFolder
    ${CMAKE_RUNTIME_OUTPUT_DIRECTORY} ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(TAVRIN_MODULE_DEFINITIONS
    TAVRIN_MODULE_SUFFIX="${CMAKE_SHARED_MODULE_SUFFIX}"
    TAVRIN_MODULE_FOLDER_INSTALLED="${installedFolder}"
    TAVRIN_MODULE_FOLDER_BUILT="${builtFolder}")
