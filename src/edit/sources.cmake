# Sources of src/edit.
