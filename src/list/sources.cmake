# Sources of src/list.
