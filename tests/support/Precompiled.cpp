// The object library of the precompiled headers needs a source.
