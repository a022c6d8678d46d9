// Nothing: a target that precompiles headers for the tests needs a source.
