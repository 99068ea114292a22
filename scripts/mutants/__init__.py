"""Changes the library in one place at a time and looks whether a test notices. `./dev mutants` runs it; docs/testing.md says how."""
