# The commands a person needs; scripts/ does the work. `make run ARGS="~/a ~/b"` opens two folders.
PREFIX ?= /usr/local
DESTDIR ?=
ARGS ?=
JOBS ?= $(shell nproc)

.PHONY: run build test sanitizers bench lint install deps clean

run: deps
	cmake --preset debug
	cmake --build build --parallel $(JOBS) --target twinleaf
	@if [ -n "$$DISPLAY$$WAYLAND_DISPLAY" ]; then exec build/twinleaf $(ARGS); \
	else exec scripts/tour build/twinleaf build/tour; fi

build: deps
	cmake --preset debug
	cmake --build build --parallel $(JOBS)

test: build
	ctest --test-dir build --output-on-failure --parallel $(JOBS)

# halt_on_error for both; leaks are left out, the font and theme libraries keep what they once loaded.
sanitizers: deps
	cmake --preset sanitizers
	cmake --build build-sanitizers --parallel $(JOBS)
	ASAN_OPTIONS=detect_leaks=0 UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1 \
	    ctest --test-dir build-sanitizers --output-on-failure --parallel $(JOBS)

bench: deps
	cmake --preset release
	cmake --build build-release --parallel $(JOBS)
	scripts/bench build-release

lint: deps
	cmake --preset debug
	scripts/lint build

install: deps
	cmake --preset release -DTWINLEAF_BENCHMARKS=OFF
	cmake --build build-release --parallel $(JOBS) --target twinleaf
	DESTDIR="$(DESTDIR)" cmake --install build-release --prefix "$(PREFIX)"

deps:
	@scripts/install-deps

clean:
	rm -rf build build-release build-sanitizers
