# Sources of src/buttons.
list(APPEND QUILL_WIN_SOURCES buttons/hbutt.cpp buttons/hstat.cpp buttons/htool.cpp)
list(APPEND QUILL_WIN_SOURCES buttons/hstatpaint.cpp)
list(APPEND QUILL_CORE_SOURCES buttons/hstatspec.cpp)
list(APPEND QUILL_WIN_SOURCES buttons/hbuttmsg.cpp buttons/hbuttpaint.cpp)
list(APPEND QUILL_CORE_SOURCES buttons/hbuttspec.cpp)
