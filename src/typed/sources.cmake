# Sources of src/typed.
