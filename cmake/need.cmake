# ps_need(PURPOSE FOUND PACKAGE [FOUND PACKAGE]...) ends the configuration with the names of the Debian
# packages whose variable FOUND says that they are missing; scripts/setup.sh installs what a PURPOSE needs.
function(ps_need purpose)
    set(missing "")
    while(ARGN)
        list(POP_FRONT ARGN found package)
        if(NOT ${found})
            string(APPEND missing " ${package}")
        endif()
    endwhile()
    if(missing)
        message(FATAL_ERROR " Please install:${missing} (scripts/setup.sh ${purpose})")
    endif()
endfunction()
