## The tour of examples/demo.cvx in GNU Octave: each line of it runs here as zo_units
## runs it, after ">> "; an error prints with its identifier and the tour goes on.
## Values show in Octave's own way (format long g: the value to its last digit, where
## zo_units shows 15 significant digits).
##
##   octave --eval "pkg load twzo_units; run examples/demo_octave.m"

format long g
demo_file = fullfile (fileparts (mfilename ("fullpath")), "demo.cvx");
demo_lines = strsplit (fileread (demo_file), "\n", "collapsedelimiters", false);
for demo_line = demo_lines
  demo_line = demo_line{1};
  if (isempty (strtrim (demo_line)) || strtrim (demo_line)(1) == "%")
    printf ("%s\n", demo_line);
    continue;
  endif
  printf (">> %s\n", demo_line);
  try
    eval (demo_line);
  catch demo_error
    if (isempty (demo_error.identifier))
      printf ("Error: %s\n", demo_error.message);
    else
      printf ("Error (%s): %s\n", demo_error.identifier, demo_error.message);
    endif
  end_try_catch
endfor
