# What an installation has, and where. Each folder says beside its target what of it is installed; a component is a package:
# "client" and "runtime" (the shared libraries), "development" and "tool".

# Debian keeps libraries of several machine types side by side, whatever the prefix. A project that this one is a part of says itself
# where its libraries go.
if(PROJECT_IS_TOP_LEVEL AND CMAKE_LIBRARY_ARCHITECTURE AND EXISTS "/etc/debian_version" AND NOT DEFINED CACHE{CMAKE_INSTALL_LIBDIR})
    set(CMAKE_INSTALL_LIBDIR "lib/${CMAKE_LIBRARY_ARCHITECTURE}" CACHE PATH "Object code libraries, below the prefix")
endif()
include(GNUInstallDirs)

set(TL_INSTALL_HEADERDIR "${CMAKE_INSTALL_INCLUDEDIR}/TLJiraController")
set(TL_INSTALL_INTERFACEDIR "${CMAKE_INSTALL_DATADIR}/TLJiraController/interface")
# Qt looks for plug-ins of others below its own folder of plug-ins.
set(TL_PLUGIN_FOLDER "qt6/plugins/tljiracontroller")
set(TL_INSTALL_PLUGINDIR "${CMAKE_INSTALL_LIBDIR}/${TL_PLUGIN_FOLDER}")
set(TL_INSTALL_DOCDIR "${CMAKE_INSTALL_DATADIR}/doc/libtljiracontroller-dev")
set(TL_INSTALL_PACKAGEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/TLJiraController")

# Where programs of this build find the public headers: at their places in the project or, in a project that this one is a part of,
# as an installation has them.
set(TL_HEADERS "${PROJECT_SOURCE_DIR}")
if(NOT PROJECT_IS_TOP_LEVEL)
    set(TL_HEADERS "${PROJECT_BINARY_DIR}/include")
    # The interface files likewise, for tl_embed_framework_interface_files.
    set(TLJiraController_INTERFACE_DIR "${PROJECT_BINARY_DIR}/interface" CACHE INTERNAL "Interface files of the framework")
    # What links the libraries links Qt.
    set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
endif()

# tl_copy_header(HEADER PLACE): for the projects that this one is a part of.
function(tl_copy_header header place)
    set(copy "${TL_HEADERS}/TLJiraController/${place}")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${header}")
    file(READ "${header}" text)
    string(REGEX REPLACE "(\n#include \")(TLJiraController/)?" "\\1TLJiraController/" text "${text}")
    file(CONFIGURE OUTPUT "${copy}" CONTENT "${text}" @ONLY)
endfunction()

# tl_add_shared_library(NAME OUTPUT_NAME name EXPORT_NAME name COMPONENT component [SOURCES…] FLOORS … PUBLIC … [PRIVATE …]):
# a shared library of the floors' objects. They are named one by one because a linker only takes from a static library what
# something asks for. It publishes what is marked TL_EXPORT, and nothing of the standard library's templates.
function(tl_add_shared_library name)
    cmake_parse_arguments(ARG "" "OUTPUT_NAME;EXPORT_NAME;COMPONENT" "SOURCES;FLOORS;PUBLIC;PRIVATE" ${ARGN})
    add_library(${name} SHARED ${ARG_SOURCES})
    add_library(TLJiraController::${ARG_EXPORT_NAME} ALIAS ${name})
    foreach(floor IN LISTS ARG_FLOORS)
        # With them the interface files, which have objects of their own.
        get_property(resources TARGET ${floor} PROPERTY TL_INTERFACE_OBJECTS)
        foreach(objects IN ITEMS ${floor} ${resources})
            target_sources(${name} PRIVATE $<TARGET_OBJECTS:${objects}>)
        endforeach()
    endforeach()
    set(hidden "${PROJECT_SOURCE_DIR}/cmake/hidden-symbols.map")
    set_target_properties(${name} PROPERTIES
        LINKER_LANGUAGE CXX
        OUTPUT_NAME ${ARG_OUTPUT_NAME}
        EXPORT_NAME ${ARG_EXPORT_NAME}
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
        LINK_DEPENDS "${hidden};${PROJECT_SOURCE_DIR}/cmake/shared-symbols.map")
    target_compile_features(${name} INTERFACE cxx_std_20)
    target_include_directories(${name}
        PRIVATE "${PROJECT_SOURCE_DIR}"
        INTERFACE "$<BUILD_INTERFACE:${TL_HEADERS}>" "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>")
    target_link_libraries(${name} PRIVATE ${ARG_PRIVATE} PUBLIC ${ARG_PUBLIC})
    # What a library takes from itself it takes from nobody else: a program with a global kKey of its own is no reason to read that.
    # All but what the list names.
    set(shared "${PROJECT_SOURCE_DIR}/cmake/shared-symbols.map")
    target_link_options(${name} PRIVATE "LINKER:--dynamic-list=${shared}")
    # The client and its network thread live as long as the process: who loads a library does not unload it again.
    target_link_options(${name} PRIVATE "LINKER:-z,nodelete")
    if(NOT TL_SANITIZE)
        target_link_options(${name} PRIVATE "LINKER:--version-script=${hidden}" "LINKER:-z,defs")
    endif()
    install(TARGETS ${name} EXPORT ${ARG_EXPORT_NAME}
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        COMPONENT ${ARG_COMPONENT}
        NAMELINK_COMPONENT development)
    install(EXPORT ${ARG_EXPORT_NAME}
        FILE "TLJiraController${ARG_EXPORT_NAME}Targets.cmake"
        NAMESPACE TLJiraController::
        DESTINATION "${TL_INSTALL_PACKAGEDIR}"
        COMPONENT development)
    file(RELATIVE_PATH to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
    configure_file("${PROJECT_SOURCE_DIR}/cmake/${ARG_OUTPUT_NAME}.pc.in"
        "${PROJECT_BINARY_DIR}/${ARG_OUTPUT_NAME}.pc" @ONLY)
    install(FILES "${PROJECT_BINARY_DIR}/${ARG_OUTPUT_NAME}.pc"
        DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
        COMPONENT development)
endfunction()

# tl_install_headers(a.h b.h …): the public headers of this folder, at the same place below include/TLJiraController.
# tl_install_headers(UMBRELLA a.h) puts one that includes the others above them all.
function(tl_install_headers)
    cmake_parse_arguments(ARG "UMBRELLA" "" "" ${ARGN})
    file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
    if(ARG_UMBRELLA)
        set(folder "")
    endif()
    foreach(header IN LISTS ARG_UNPARSED_ARGUMENTS)
        cmake_path(GET header PARENT_PATH room)
        install(FILES "${header}" DESTINATION "${TL_INSTALL_HEADERDIR}/${folder}/${room}" COMPONENT development)
        if(NOT PROJECT_IS_TOP_LEVEL)
            tl_copy_header("${CMAKE_CURRENT_SOURCE_DIR}/${header}" "${folder}/${header}")
        endif()
    endforeach()
    list(TRANSFORM ARG_UNPARSED_ARGUMENTS PREPEND "${folder}/")
    list(TRANSFORM ARG_UNPARSED_ARGUMENTS REPLACE "^/" "")
    set_property(GLOBAL APPEND PROPERTY TL_INSTALLED_HEADERS ${ARG_UNPARSED_ARGUMENTS})
endfunction()

# tl_install_interface_files(a.ui …): for hosts that embed them, or start from them with their own.
function(tl_install_interface_files)
    install(FILES ${ARGN} DESTINATION "${TL_INSTALL_INTERFACEDIR}" COMPONENT development)
    if(NOT PROJECT_IS_TOP_LEVEL)
        foreach(file IN LISTS ARGN)
            configure_file("${file}" "${TLJiraController_INTERFACE_DIR}/${file}" COPYONLY)
        endforeach()
    endif()
endfunction()

# tl_install_package(): what find_package needs. To be called once, behind everything else that is installed.
function(tl_install_package)
    include(CMakePackageConfigHelpers)
    configure_package_config_file("${PROJECT_SOURCE_DIR}/cmake/TLJiraControllerConfig.cmake.in"
        "${PROJECT_BINARY_DIR}/TLJiraControllerConfig.cmake"
        INSTALL_DESTINATION "${TL_INSTALL_PACKAGEDIR}"
        PATH_VARS TL_INSTALL_INTERFACEDIR TL_INSTALL_PLUGINDIR)
    write_basic_package_version_file("${PROJECT_BINARY_DIR}/TLJiraControllerConfigVersion.cmake"
        COMPATIBILITY SameMajorVersion)
    install(FILES
        "${PROJECT_BINARY_DIR}/TLJiraControllerConfig.cmake"
        "${PROJECT_BINARY_DIR}/TLJiraControllerConfigVersion.cmake"
        "${PROJECT_SOURCE_DIR}/cmake/InterfaceFiles.cmake"
        DESTINATION "${TL_INSTALL_PACKAGEDIR}"
        COMPONENT development)
    configure_file("${PROJECT_SOURCE_DIR}/cmake/PrefixIncludes.cmake.in" "${PROJECT_BINARY_DIR}/PrefixIncludes.cmake" @ONLY)
    install(SCRIPT "${PROJECT_BINARY_DIR}/PrefixIncludes.cmake" COMPONENT development)
    install(FILES "${PROJECT_SOURCE_DIR}/README.md" DESTINATION "${TL_INSTALL_DOCDIR}" COMPONENT development)
    install(DIRECTORY "${PROJECT_SOURCE_DIR}/docs" DESTINATION "${TL_INSTALL_DOCDIR}" COMPONENT development)
endfunction()
