# Sources of src/edit.
list(APPEND QUILL_WIN_SOURCES edit/hedit.cpp)
