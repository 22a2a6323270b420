# The Debian packages, a component of what is installed each, made by `cpack -G DEB` in the build folder of the preset
# release; tools/package.sh does it.
set(DRAVIK_COMPONENTS trainer library dev python)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME dravik)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "The Dravik authors <maintainers@dravik.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_SET_DESTDIR OFF)
set(CPACK_STRIP_FILES ON)
# The same input gives the same package.
set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/PackageDates.cmake)
set(CPACK_COMPONENTS_ALL ${DRAVIK_COMPONENTS})
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

# debian_package(COMPONENT NAME SECTION "the first line" "the other lines"): what the component's package is called and says.
function(debian_package component name section summary text)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section} PARENT_SCOPE)
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  # Licence and changes, where Debian's tools look for them.
  set(place ${CMAKE_BINARY_DIR}/packages/${name})
  file(MAKE_DIRECTORY ${place})
  configure_file(${PROJECT_SOURCE_DIR}/packaging/linux/copyright ${place}/copyright COPYONLY)
  execute_process(COMMAND ${PROJECT_SOURCE_DIR}/packaging/linux/debian-changelog.sh ${PROJECT_SOURCE_DIR}/CHANGELOG.md ${name}
      ${PROJECT_VERSION} ${CPACK_PACKAGE_CONTACT}
    COMMAND gzip -9nc OUTPUT_FILE ${place}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
  install(FILES ${place}/copyright ${place}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
endfunction()

debian_package(trainer dravik-trainer graphics "font training and reading for the Dravik OCR tool"
"Teaches fonts to the Dravik OCR tool from images of printed parts, and reads
images with them, in a window or by commands that need no display.

Characters that are found in an image become labelled samples of a font;
a small network is trained on them in a second. Histograms point out samples
that fit badly, and a check on held-out samples tells how good the font is.")
# Formats other than PNG and BMP, and a desktop without X11, are plug-ins of Qt.
set(CPACK_DEBIAN_TRAINER_PACKAGE_RECOMMENDS "qt6-image-formats-plugins, qt6-wayland")
set(CPACK_DEBIAN_TRAINER_PACKAGE_SUGGESTS "www-browser, python3-dravik")

debian_package(library libdravik0 libs "reads with fonts of the Dravik OCR tool"
"Finds the characters of a grey image, reads them with a font that was trained
from images of printed parts, and tells how sure it is of each. One font may
be read with by any number of threads. Fonts can be taught as well.")
# CPack's own way calls ldconfig in scripts, for which Debian has a trigger.
configure_file(packaging/linux/libdravik0/shlibs.in packages/libdravik0/shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/linux/libdravik0/triggers
  ${CMAKE_BINARY_DIR}/packages/libdravik0/shlibs)

debian_package(dev libdravik-dev libdevel "reads with fonts of the Dravik OCR tool (development)"
"Headers for C and C++20, files for pkg-config and CMake, the guide with its
samples and the reference of libdravik, which reads grey images with fonts
trained from images of printed parts.")
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libdravik0 (= ${PROJECT_VERSION})")

debian_package(python python3-dravik python "reads with fonts of the Dravik OCR tool (Python 3)"
"A module that reads numpy images with fonts trained from images of printed
parts: texts, boxes, confidences and alternatives. It teaches and verifies as
well.")
set(CPACK_DEBIAN_PYTHON_PACKAGE_DEPENDS "libdravik0 (= ${PROJECT_VERSION}), python3 (>= 3.9), python3-numpy")
set(CPACK_DEBIAN_PYTHON_PACKAGE_RECOMMENDS "python3-pil")
set(CPACK_DEBIAN_PYTHON_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/linux/python3-dravik/postinst
  ${PROJECT_SOURCE_DIR}/packaging/linux/python3-dravik/prerm)
include(CPack)
