# The two everyday commands: `make run ARGS="features list"` and `make test`.
JOBS ?= $(shell nproc)
ARGS ?= --help
FUZZ_SECONDS ?= 30
FUZZ_JOBS ?= $(JOBS)

.PHONY: deps run test bench fuzz clean

deps:
	@scripts/install-deps

run: deps
	@cmake --preset release >/dev/null
	@cmake --build --preset release -j $(JOBS) --target quillmar >/dev/null || cmake --build --preset release -j 1 --target quillmar
	@./build/release/cli/quillmar $(ARGS)

test: deps
	cmake --preset dev
	cmake --build --preset dev -j $(JOBS)
	ctest --preset dev -j $(JOBS)

bench: deps
	cmake --preset release
	cmake --build --preset release -j $(JOBS)
	@for b in build/release/bench/bench_*; do echo "== $$b"; $$b; done

fuzz: deps
	cmake --preset fuzz
	cmake --build --preset fuzz -j $(JOBS)
	@scripts/fuzz-all $(FUZZ_SECONDS) $(FUZZ_JOBS)

clean:
	rm -rf build
