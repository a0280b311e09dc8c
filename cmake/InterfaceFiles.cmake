# tl_embed_interface_files(TARGET PREFIX identifier FILES a.ui b.ui …): compiles Qt Designer files into the target as the bundle
# `identifier`, where tljira::Bundle finds them by their base names; a host's own files have the prefix "main". It may be
# called several times for one target or one prefix. The files are also there in programs that link a static target without
# asking for any of its symbols.
function(tl_embed_interface_files target)
    cmake_parse_arguments(ARG "" "PREFIX" "FILES" ${ARGN})
    if(NOT ARG_PREFIX OR NOT ARG_FILES)
        message(FATAL_ERROR "tl_embed_interface_files(${target}): PREFIX and FILES are needed")
    endif()
    # Qt's function reads variables of the folder that has found Qt, which another one need not be.
    find_package(Qt6 6.4 REQUIRED COMPONENTS Core)
    get_property(count TARGET ${target} PROPERTY TL_INTERFACE_FILE_SETS)
    if(NOT count)
        set(count 0)
    endif()
    math(EXPR count "${count} + 1")
    set_property(TARGET ${target} PROPERTY TL_INTERFACE_FILE_SETS ${count})

    foreach(file IN LISTS ARG_FILES)
        get_filename_component(alias "${file}" NAME)
        set_source_files_properties("${file}" PROPERTIES QT_RESOURCE_ALIAS "${alias}")
    endforeach()
    # Read at each opening of a window: what compressing saves in bytes is not worth the time.
    qt6_add_resources(${target} "${target}_interface_${count}" PREFIX "/${ARG_PREFIX}" FILES ${ARG_FILES}
        OPTIONS --no-compress OUTPUT_TARGETS objects)
    set_property(TARGET ${target} APPEND PROPERTY TL_INTERFACE_OBJECTS ${objects})
endfunction()

# tl_embed_framework_interface_files(TARGET [NAMES …] [REPLACEMENTS own/a.ui …]): makes interface files of the framework the
# host's own, as its main bundle. NAMES are base names; without them it is the two that the older window takes from its host,
# JABodyViewController and JAHeadViewController. A replacement takes the place of the file of the same name.
function(tl_embed_framework_interface_files target)
    cmake_parse_arguments(ARG "" "" "NAMES;REPLACEMENTS" ${ARGN})
    if(ARG_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "tl_embed_framework_interface_files(${target}): unexpected ${ARG_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT ARG_NAMES)
        set(ARG_NAMES JABodyViewController JAHeadViewController)
    endif()
    set(files "")
    foreach(replacement IN LISTS ARG_REPLACEMENTS)
        get_filename_component(file "${replacement}" ABSOLUTE)
        get_filename_component(file_name "${replacement}" NAME)
        get_filename_component(name "${replacement}" NAME_WLE)
        if(NOT EXISTS "${TLJiraController_INTERFACE_DIR}/${file_name}")
            message(FATAL_ERROR "tl_embed_framework_interface_files(${target}): the framework has no interface file ${file_name}."
                " A replacement has the name of the file whose place it takes.")
        endif()
        list(REMOVE_ITEM ARG_NAMES ${name})
        list(APPEND files "${file}")
    endforeach()
    foreach(name IN LISTS ARG_NAMES)
        if(NOT EXISTS "${TLJiraController_INTERFACE_DIR}/${name}.ui")
            message(FATAL_ERROR "tl_embed_framework_interface_files(${target}): the framework has no interface file ${name}.ui.")
        endif()
        list(APPEND files "${TLJiraController_INTERFACE_DIR}/${name}.ui")
    endforeach()
    tl_embed_interface_files(${target} PREFIX main FILES ${files})
endfunction()
