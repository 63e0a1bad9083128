# The library that reads archives, as the target libarchive: for Windows the one that the set-up has built (static, beside
# the static zlib), natively the distribution's. Without it the target is missing, and with it all that needs it.
if(WIN32)
  file(GLOB archiveLibrary CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/build/libarchive/libarchive.a)
  if(archiveLibrary)
    add_library(libarchive STATIC IMPORTED GLOBAL)
    set_target_properties(libarchive PROPERTIES
      IMPORTED_LOCATION ${archiveLibrary}
      INTERFACE_INCLUDE_DIRECTORIES ${PROJECT_SOURCE_DIR}/build/libarchive
      INTERFACE_COMPILE_DEFINITIONS LIBARCHIVE_STATIC
      INTERFACE_LINK_LIBRARIES z)
  endif()
else()
  find_library(archiveLibrary archive)
  find_path(archiveHeaders archive.h)
  if(archiveLibrary AND archiveHeaders)
    add_library(libarchive INTERFACE IMPORTED GLOBAL)
    set_target_properties(libarchive PROPERTIES
      INTERFACE_INCLUDE_DIRECTORIES ${archiveHeaders}
      INTERFACE_LINK_LIBRARIES ${archiveLibrary})
  endif()
endif()

if(NOT TARGET libarchive)
  message(WARNING "libarchive is missing, so BackupCheck and its tests are not built; ./run --build sets it up")
endif()
