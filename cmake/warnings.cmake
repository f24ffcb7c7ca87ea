# Gives a target of this project its warnings; whoever links the target does not inherit them.
function(tree800_enable_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
        -Wnon-virtual-dtor -Woverloaded-virtual
        $<$<BOOL:${TREE800_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
