// For libraries that have precompiled headers alone.
