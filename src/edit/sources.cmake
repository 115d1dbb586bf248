# Sources of src/edit.
list(APPEND QUILL_WIN_SOURCES edit/hedit.cpp edit/heditbuf.cpp edit/heditinput.cpp edit/heditpaint.cpp)
list(APPEND QUILL_CORE_SOURCES edit/typedcolor.cpp)
list(APPEND QUILL_WIN_SOURCES edit/typed.cpp)
