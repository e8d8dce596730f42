# interface.h, whose SHOW_INTERFACE is the hash of the headers that the show's code and those outside it have in
# common: after a change there they don't fit together.
file(GLOB shared CONFIGURE_DEPENDS ${root}/render/[!.]*.h ${root}/geometry/[!.]*.h ${root}/image/[!.]*.h)
list(APPEND shared ${root}/app/clock.h ${root}/script/resources.h ${root}/script/run_up.h ${root}/script/timeline.h
     ${root}/tools/rehearse/live/code.h ${root}/tools/rehearse/live/number.h)
set(interface ${CMAKE_BINARY_DIR}/interface.h)
add_custom_command(OUTPUT ${interface} DEPENDS ${shared} VERBATIM COMMENT "What the show's code rests on"
                   COMMAND ${root}/tools/rehearse/live/interface ${interface} ${shared})
