# Debian's hardening flags for every target, taken from dpkg-buildflags so they follow
# the release's own policy. Only the hardening feature area is asked for: the others
# (optimisation, reproducible paths) belong to the build type and would make compiled
# objects differ between checkouts.
find_program(QB_DPKG_BUILDFLAGS dpkg-buildflags)
if(NOT QB_DPKG_BUILDFLAGS)
  message(STATUS "dpkg-buildflags not found: building without Debian's hardening flags")
  return()
endif()

function(qb_dpkg_buildflag variable flag)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env
            "DEB_BUILD_MAINT_OPTIONS=hardening=+all qa=-all optimize=-all reproducible=-all"
            ${QB_DPKG_BUILDFLAGS} --get ${flag}
    OUTPUT_VARIABLE value OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(value UNIX_COMMAND "${value}")
  # The build type chooses optimisation and debug information.
  list(FILTER value EXCLUDE REGEX "^-(O[0-9s]?|g)$")
  set(${variable} ${value} PARENT_SCOPE)
endfunction()

qb_dpkg_buildflag(QB_HARDENING_CPPFLAGS CPPFLAGS)
qb_dpkg_buildflag(QB_HARDENING_CXXFLAGS CXXFLAGS)
qb_dpkg_buildflag(QB_HARDENING_LDFLAGS LDFLAGS)
add_compile_options(${QB_HARDENING_CPPFLAGS} ${QB_HARDENING_CXXFLAGS})
add_link_options(${QB_HARDENING_LDFLAGS})
message(STATUS "Hardening: ${QB_HARDENING_CPPFLAGS} ${QB_HARDENING_CXXFLAGS} ${QB_HARDENING_LDFLAGS}")
