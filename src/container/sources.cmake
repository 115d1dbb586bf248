# Sources of src/container.
