function text = message_of (name, inputs)
% What a call that fails tells its user, without what a host puts before or behind it; '' for one that does not fail.
% Of the hosts' own messages for lack of memory: 'out of memory'.

% SPDX-License-Identifier: MIT

  text = '';
  try
    evalc ('feval (name, inputs{:});');
  catch failure
    text = strtrim (regexprep (failure.message, '^(Error using \S+\s+)?(\w*attribute_profile\w*: )?', ''));
    if ~isempty (regexpi (text, 'out of memory|bad_alloc|bad_array_new_length|allocat'))
      text = 'out of memory';
    end
  end
end
