# Sources of src/frame.
list(APPEND QUILL_CORE_SOURCES frame/strings.cpp)
list(APPEND QUILL_WIN_SOURCES frame/entry.cpp frame/ctlproc.cpp frame/helpers.cpp)
list(APPEND QUILL_CORE_SOURCES frame/dlgtemplate.cpp)
list(APPEND QUILL_WIN_SOURCES frame/dialog.cpp)
