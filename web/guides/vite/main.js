import { convert, PagerexError } from 'pagerex';

const output = document.querySelector('pre');
document.querySelector('input').addEventListener('change', async ({ target }) => {
  try {
    const { content } = await convert(target.files[0], { format: 'markdown', pictures: 'none' });
    output.textContent = content;
  } catch (error) {
    if (!(error instanceof PagerexError)) throw error;
    output.textContent = error.message;
  }
});
