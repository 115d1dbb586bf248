# Library sources. QUILL_CORE_SOURCES are the window-free layers that also build
# natively; QUILL_WIN_SOURCES need Win32. Each folder lists its own files.
set(QUILL_CORE_SOURCES)
set(QUILL_WIN_SOURCES)
foreach(dir frame typed container draw buttons edit list grid)
  include(${CMAKE_CURRENT_LIST_DIR}/${dir}/sources.cmake)
endforeach()
