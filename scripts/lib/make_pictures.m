function make_pictures (folder)
% Writes the pictures of the user guide into FOLDER. The guide gives the call of each; attribute_profile has to
% be on the path, and so has the folder `private` beside it, for the captions.

% SPDX-License-Identifier: MIT

  earth = imread ('/usr/share/xplanet/images/earth.jpg');
  X = earth(225:414,495:664,:);  % the Great Lakes, with dark lakes of all shapes, and Cuba, with bright islands
  imwrite (X, fullfile (folder, 'coast.png'));
  I = 3 * X(:,:,1);

  examples = {'area', 150; 'diagonal', 17; 'inertia', 0.3; 'std', 30};
  for k = 1:size (examples, 1)
    [attribute, threshold] = examples{k,:};
    write_row (attribute_profile (I, attribute, threshold), ...
               {sprintf('dark < %g', threshold), 'input', sprintf('bright < %g', threshold)}, ...
               fullfile (folder, [attribute '.png']));
  end

  rules = {'min', 'max', 'direct', 'sub'};
  planes = I;
  for k = 1:4
    AP = attribute_profile (I, 'inertia', 0.3, 4, rules{k});
    planes(:,:,k+1) = AP(:,:,3);
  end
  write_row (planes, [{'input'}, rules], fullfile (folder, 'rules.png'));
end

% The planes side by side with white between them, each pixel as a square of 2 x 2, and a caption above each.
function write_row (planes, captions, file)
  [rows, cols, n] = size (planes);
  row = repmat (uint8 (255), 10 + rows, n * (cols + 2) - 2);
  for k = 1:n
    left = (k - 1) * (cols + 2);
    text = caption_text (captions{k});
    row(1:9,left+(1:size (text, 2))) = 255 * uint8 (~text);
    row(11:end,left+(1:cols)) = planes(:,:,k);
  end
  imwrite (repelem (row, 2, 2), file);
end
