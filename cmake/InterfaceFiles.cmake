# tl_embed_interface_files(TARGET PREFIX identifier FILES a.ui b.ui …): compiles Qt Designer files into the target as the bundle
# `identifier`, where platform::Bundle finds them by their base names; a host's own files have the prefix "main". It may be
# called several times for one target or one prefix. The files are also there in programs that link a static target without
# asking for any of its symbols.
function(tl_embed_interface_files target)
    cmake_parse_arguments(ARG "" "PREFIX" "FILES" ${ARGN})
    if(NOT ARG_PREFIX OR NOT ARG_FILES)
        message(FATAL_ERROR "tl_embed_interface_files(${target}): PREFIX and FILES are needed")
    endif()
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
    qt_add_resources(${target} "${target}_interface_${count}" PREFIX "/${ARG_PREFIX}" FILES ${ARG_FILES}
        OPTIONS --no-compress)
endfunction()
