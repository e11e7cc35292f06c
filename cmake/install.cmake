# What `cmake --install` puts where, by component, and the packages that `cpack` makes of it:
#
#   runtime   the handler, stripped
#   web       the page, with the API description that it reads
#   doc       documents, API description, web server samples, manual page
#   simulator the simulated camera, started by camera-simulator
include(GNUInstallDirs)
set(CAMERA_CGI_DIR lib/cgi-bin CACHE STRING "Where the handler is installed")
set(CAMERA_WEB_DIR ${CMAKE_INSTALL_DATADIR}/camera-remote/web CACHE STRING "Where the page is installed")
set(CMAKE_INSTALL_DOCDIR ${CMAKE_INSTALL_DATAROOTDIR}/doc/camera-remote)

install(CODE "set(CMAKE_INSTALL_DO_STRIP TRUE)" COMPONENT runtime)
install(TARGETS camera_remote.cgi DESTINATION ${CAMERA_CGI_DIR} COMPONENT runtime)

install(DIRECTORY web/ DESTINATION ${CAMERA_WEB_DIR} COMPONENT web)
install(FILES api/openapi.json DESTINATION ${CAMERA_WEB_DIR}/api COMPONENT web)

install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc)
install(DIRECTORY api DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
        PATTERN *.py EXCLUDE PATTERN generate EXCLUDE PATTERN __pycache__ EXCLUDE)
install(DIRECTORY packaging/servers packaging/systemd DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT doc
        USE_SOURCE_PERMISSIONS)
configure_file(packaging/man/camera_remote.cgi.8.in man/camera_remote.cgi.8 @ONLY)
install(FILES ${CMAKE_BINARY_DIR}/man/camera_remote.cgi.8
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man8 COMPONENT doc)

# ./run and what it starts, in the layout that they have here: `run --no-build` needs no other.
if(CAMERA_BUILD_SIMULATOR)
  set(simulator_dir lib/camera-remote)
  install(PROGRAMS run DESTINATION ${simulator_dir} COMPONENT simulator)
  install(DIRECTORY scripts simulator DESTINATION ${simulator_dir} COMPONENT simulator
          FILES_MATCHING PATTERN *.sh PATTERN *.conf PATTERN scenes/*.json)
  install(DIRECTORY web DESTINATION ${simulator_dir} COMPONENT simulator)
  install(FILES api/openapi.json DESTINATION ${simulator_dir}/api COMPONENT simulator)
  install(CODE "set(CMAKE_INSTALL_DO_STRIP TRUE)" COMPONENT simulator)
  install(TARGETS camera_remote.cgi simulated_camera camera_tap
          DESTINATION ${simulator_dir}/build/release COMPONENT simulator)
  install(PROGRAMS packaging/camera-simulator DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT simulator)
  configure_file(packaging/man/camera-simulator.1.in man/camera-simulator.1 @ONLY)
  install(FILES ${CMAKE_BINARY_DIR}/man/camera-simulator.1
          DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT simulator)
endif()

set(CPACK_PACKAGE_NAME camera-remote)
set(CPACK_PACKAGE_VENDOR "The camera_remote maintainers")
set(CPACK_PACKAGE_CONTACT "The camera_remote maintainers <maintainers@camera-remote.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "${PROJECT_DESCRIPTION}")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CHECKSUM SHA256)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_GENERATOR DEB TGZ)
set(CPACK_COMPONENTS_ALL runtime web doc)
if(CAMERA_BUILD_SIMULATOR)
  list(APPEND CPACK_COMPONENTS_ALL simulator)
endif()
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "The request handler, a static CGI program.")
set(CPACK_COMPONENT_WEB_DESCRIPTION "The web remote: a page that operates the camera in a browser.")
set(CPACK_COMPONENT_DOC_DESCRIPTION "Documents, API description and samples for four web servers.")
set(CPACK_COMPONENT_SIMULATOR_DESCRIPTION "A simulated camera with a web server, for client developers.")
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_DEPENDS
    "bash, curl, libc6, libcpp-httplib0.11, libstdc++6, lighttpd, util-linux")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION web)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME camera-remote)
set(CPACK_DEBIAN_WEB_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_WEB_PACKAGE_RECOMMENDS camera-remote)
set(CPACK_DEBIAN_DOC_PACKAGE_ARCHITECTURE all)
set(package_architecture amd64)
if(CMAKE_SYSTEM_PROCESSOR STREQUAL arm)
  set(package_architecture armhf)
endif()
set(CPACK_DEBIAN_RUNTIME_PACKAGE_ARCHITECTURE ${package_architecture})
set(CPACK_DEBIAN_SIMULATOR_PACKAGE_ARCHITECTURE ${package_architecture})
set(CPACK_SYSTEM_NAME ${package_architecture})
include(CPack)
