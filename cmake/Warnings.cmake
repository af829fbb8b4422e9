# What the compiler warns of, each with its reason. Most presets make errors of them, but not that of run.sh:
# a later compiler's new warning must not keep a user from building.
add_library(gantrel_warnings INTERFACE)
target_compile_options(gantrel_warnings INTERFACE
  -Wall -Wextra -Wpedantic  # the families nobody argues about
  -Wshadow                  # an inner name that hides an outer one is a misread line waiting to happen
  -Wconversion              # a count or an index that silently changes its size or sign
  -Wsign-conversion         # the same, between signed and unsigned
  -Wold-style-cast          # a cast has to say what kind it is
  -Wnon-virtual-dtor        # deleting through a base without a virtual destructor
  -Woverloaded-virtual      # an event handler that overrides nothing is never called
  -Wundef                   # a misspelt macro in #if reads as 0
  # GCC 12 sees an overlap in sums of strings that begin with a literal, where there is none.
  $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
)
