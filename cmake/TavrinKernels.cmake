# tavrin_kernels(TARGET) lets sources of TARGET hold loops that Highway compiles for every instruction
# set that is left here; the processor's best is chosen at run time. Processors with SSSE3 and without
# SSE4 have died out; under sanitizers one set beside plain code is enough.
function(tavrin_kernels target)
    target_link_libraries(${target} PRIVATE hwy::hwy)
    if(TAVRIN_SANITIZERS)
        target_compile_definitions(${target} PRIVATE
            "HWY_DISABLED_TARGETS=(HWY_SSSE3|HWY_SSE4|HWY_AVX3)")
    else()
        target_compile_definitions(${target} PRIVATE HWY_DISABLED_TARGETS=HWY_SSSE3)
    endif()
endfunction()
