# Convenience targets; see README.md.
BUILD_DIR      ?= build
ASAN_BUILD_DIR ?= build-asan
FUZZ_BUILD_DIR ?= build-fuzz
FUZZ_SECONDS   ?= 60
FUZZ_WORK      ?= $(FUZZ_BUILD_DIR)/work
JOBS           ?= 2
CMAKE_FLAGS    ?=
GENERATOR      := $(shell command -v ninja >/dev/null 2>&1 && echo "-G Ninja")

.PHONY: all deps build build-asan build-fuzz test test-plain test-asan demo bench install clean docs \
        fuzz valgrind soak

all: build

deps:
	@scripts/install-deps.sh

$(BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(BUILD_DIR) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo $(CMAKE_FLAGS)

$(ASAN_BUILD_DIR)/CMakeCache.txt:
	cmake -S . -B $(ASAN_BUILD_DIR) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo -DZKIT_SANITIZE=ON \
	      -DZKIT_BUILD_EXAMPLES=OFF -DZKIT_BUILD_TOOLS=OFF $(CMAKE_FLAGS)

build: deps $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j$(JOBS)

build-asan: deps $(ASAN_BUILD_DIR)/CMakeCache.txt
	cmake --build $(ASAN_BUILD_DIR) -j$(JOBS)

test-plain: build
	ctest --test-dir $(BUILD_DIR) --output-on-failure -j$(JOBS)

test-asan: build-asan
	ctest --test-dir $(ASAN_BUILD_DIR) --output-on-failure -j$(JOBS)

# The whole suite, once plain and once under ASan + UBSan.
test: test-plain test-asan

demo: build
	$(BUILD_DIR)/examples/gallery/zkit-gallery

bench: deps $(BUILD_DIR)/CMakeCache.txt
	cmake -S . -B $(BUILD_DIR) -DZKIT_BUILD_BENCH=ON
	cmake --build $(BUILD_DIR) -j$(JOBS)
	@for b in $(BUILD_DIR)/bench/zkit-bench-*; do \
	    [ -f "$$b" ] && [ -x "$$b" ] || continue; \
	    echo "== $$(basename $$b)"; QT_QPA_PLATFORM=offscreen $$b || exit 1; \
	done

# libFuzzer targets: a clang build of the library alone, instrumented;
# each target runs FUZZ_SECONDS on a scratch corpus (fuzz/run.sh).
$(FUZZ_BUILD_DIR)/CMakeCache.txt:
	CC=clang CXX=clang++ cmake -S . -B $(FUZZ_BUILD_DIR) $(GENERATOR) -DCMAKE_BUILD_TYPE=RelWithDebInfo \
	      -DZKIT_BUILD_FUZZ=ON -DZKIT_BUILD_TESTS=OFF -DZKIT_BUILD_EXAMPLES=OFF -DZKIT_BUILD_TOOLS=OFF \
	      -DZKIT_BUILD_BENCH=OFF $(CMAKE_FLAGS)

build-fuzz: deps $(FUZZ_BUILD_DIR)/CMakeCache.txt
	cmake --build $(FUZZ_BUILD_DIR) -j$(JOBS)

fuzz: build-fuzz
	fuzz/run.sh $(FUZZ_BUILD_DIR) $(FUZZ_SECONDS) $(FUZZ_WORK)

# The plain build's tests under valgrind memcheck (slow; not part of
# `make test`). VALGRIND_TESTS selects tests by name, e.g. "tst_xmlnode tst_zxmlui".
# Regular expressions run without their JIT, whose generated code memcheck
# cannot follow.
VALGRIND_TESTS ?=
VALGRIND_FLAGS ?= --tool=memcheck --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite \
                  --show-leak-kinds=definite --track-origins=no --num-callers=30 \
                  --suppressions=tests/valgrind.supp --gen-suppressions=all
valgrind: deps $(BUILD_DIR)/CMakeCache.txt
	cmake --build $(BUILD_DIR) -j$(JOBS) $(if $(VALGRIND_TESTS),--target $(VALGRIND_TESTS))
	@command -v valgrind >/dev/null || { echo "valgrind is not installed"; exit 1; }
	@failed=""; \
	tests="$(VALGRIND_TESTS)"; [ -n "$$tests" ] || tests=$$(cd $(BUILD_DIR)/tests && find . -maxdepth 1 -type f -perm -u+x -name 'tst_*' -printf '%f\n' | sort); \
	mkdir -p $(BUILD_DIR)/valgrind; \
	for t in $$tests; do \
	    log=$(BUILD_DIR)/valgrind/$$t.log; \
	    QT_QPA_PLATFORM=offscreen QT_QPA_FONTDIR=/usr/share/fonts/truetype/dejavu QT_ENABLE_REGEXP_JIT=0 \
	        valgrind $(VALGRIND_FLAGS) --log-file=$$log $(BUILD_DIR)/tests/$$t >$$log.out 2>&1; \
	    status=$$?; \
	    if [ $$status -eq 0 ]; then echo "valgrind $$t: clean"; \
	    else echo "valgrind $$t: FAILED (status $$status), see $$log"; failed="$$failed $$t"; fi; \
	done; \
	[ -z "$$failed" ] || { echo "valgrind reports in:$$failed"; exit 1; }

# Soak under ASan + LSan: SOAK_WINDOWS gallery windows created, shown and
# destroyed; prints the live heap at window 100 and at the end.
SOAK_WINDOWS  ?= 1000
SOAK_DOCUMENT ?= $(firstword $(wildcard examples/gallery/gallery.xml) examples/demo/demo.xml)
soak: build-asan
	QT_QPA_PLATFORM=offscreen QT_QPA_FONTDIR=/usr/share/fonts/truetype/dejavu \
	ASAN_OPTIONS=detect_leaks=1:halt_on_error=1:detect_stack_use_after_return=0 \
	LSAN_OPTIONS=suppressions=$(CURDIR)/tests/lsan.supp:print_suppressions=0 \
	UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
	    $(ASAN_BUILD_DIR)/tests/soak/zkit-soak $(SOAK_DOCUMENT) $(SOAK_WINDOWS)

install: build
	cmake --install $(BUILD_DIR) $(if $(PREFIX),--prefix $(PREFIX))

clean:
	rm -rf $(BUILD_DIR) $(ASAN_BUILD_DIR) $(FUZZ_BUILD_DIR)

# The generated parts of the documentation: the vocabulary reference and the
# gallery screenshot.
docs: build
	scripts/gen-vocabulary.sh $(BUILD_DIR)/tools/preview/zkit-preview docs/vocabulary.md
	QT_QPA_PLATFORM=offscreen $(BUILD_DIR)/examples/gallery/zkit-gallery --screenshot docs/gallery.png
