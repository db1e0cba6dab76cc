## replay_transcript (file)
## Runs in Octave the statements of a shell transcript (tests/transcripts/NAME.out)
## and compares, byte for byte, what the two share: the module's own displays of
## units and prefixes, the objects' property lists and the errors that the module
## and the host calls raise (shown as the shell shows them,
## "Error (IDENTIFIER): MESSAGE"), the text of every warning, and the values that
## the shell shows on one line (numbers to its 15 digits, logicals, texts, rows),
## which Octave shows in its own way.  Fails at the first difference.

function replay_transcript (rt_file)
  rt_lines = strsplit (fileread (rt_file), "\n", "collapsedelimiters", false);
  rt_statements = find (strncmp (rt_lines, ">> ", 3));
  rt_compared = 0;
  for rt_k = 1:numel (rt_statements)
    rt_first = rt_statements(rt_k);
    rt_last = numel (rt_lines);
    if (rt_k < numel (rt_statements))
      rt_last = rt_statements(rt_k + 1) - 1;
    endif
    ## What the statement printed, without the script's blank and comment lines after it.
    rt_block = rt_lines(rt_first + 1:rt_last);
    while (! isempty (rt_block) && (isempty (rt_block{end}) || rt_block{end}(1) == "%"))
      rt_block(end) = [];
    endwhile
    rt_expected = regexprep (sprintf ("%s\n", rt_block{:}), '(^|\n)Warning \([^)]*\): ', '$1warning: ');
    rt_statement = rt_lines{rt_first}(4:end);
    rt_actual = evalc (rt_statement, ...
                       "[rt_message, rt_id] = lasterr (); printf ('Error (%s): %s\\n', rt_id, rt_message);");
    rt_warnings = @(text) regexp (text, '(^|\n)warning: [^\n]*(\n [^\n]*)*', "match");
    rt_same = isequal (rt_warnings (rt_actual), rt_warnings (rt_expected));
    if (! isempty (regexp (rt_expected, '(^|\n)Error \((Unit|Units|Quantity):', "once"))
        || strncmp (rt_statement, "get(", 4)
        || (! isempty (strfind (rt_expected, "Error (CALVEX:"))
            && ! isempty (strfind (rt_actual, "Error (CALVEX:"))))
      rt_same = rt_same && strcmp (rt_actual, rt_expected);
      rt_compared += 1;
    elseif (! isempty (regexp (rt_expected, 'Object Array|handle to a deleted| with (no visible )?properties', "once")))
      ## The last variable shown, and the module's layout or the object's properties under it.
      rt_shown = @(text) regexp (text, '(^|\n)\w+ =\n(?!.*\n\w+ =\n).*', "match", "once");
      rt_same = rt_same && strcmp (rt_shown (rt_actual), rt_shown (rt_expected));
      rt_compared += 1;
    elseif (! isempty (rt_shown_value = regexp (rt_expected, '^(\w+) = ([^\n]+)\n$', "tokens", "once")))
      ## A value the shell shows on one line: the same value, to the shell's 15 digits.
      rt_same = rt_same && same_value (eval (rt_shown_value{1}), rt_shown_value{2});
      rt_compared += 1;
    endif
    if (! rt_same)
      error ("replay:differs", "%s, '%s':\n--- expected\n%s--- Octave\n%s", rt_file, rt_statement,
             rt_expected, rt_actual);
    endif
  endfor
  printf ("%s: %d of %d statements compared\n", rt_file, rt_compared, numel (rt_statements));
endfunction

## Whether the Octave value is what the shell shows as text: a number to 15
## significant digits, true or false, a quoted text, a row of numbers.
function same = same_value (value, text)
  if (any (strcmp (text, {"true", "false"})))
    same = islogical (value) && isscalar (value) && value == strcmp (text, "true");
  elseif (text(1) == "'")
    same = ischar (value) && strcmp (value(:)', strrep (text(2:end-1), "''", "'"));
  else
    expected = str2num (text);
    same = isnumeric (value) && isequal (size (value), size (expected));
    if (same)
      close = value == expected | (isnan (value) & isnan (expected)) ...
              | abs (value - expected) <= 5e-15 * abs (expected);
      same = all (close(:));
    endif
  endif
endfunction
